#pragma once

class Demo;

/** The steps of the demonstration, by subject. */
namespace Steps {

void serveContent(Demo& demo);
void startClient(Demo& demo);
void learnVersions(Demo& demo);
void updateTables(Demo& demo);
void loadTables(Demo& demo);
void loadOtherTables(Demo& demo);

void giftsOnSale(Demo& demo);
void giftPicture(Demo& demo);

void welcome(Demo& demo);
void maskedLines(Demo& demo);
void messages(Demo& demo);
void bubblesAndStickers(Demo& demo);

void fansTiers(Demo& demo);
void levels(Demo& demo);
void headFrames(Demo& demo);
void medal(Demo& demo);
void nobility(Demo& demo);

void banners(Demo& demo);
void pages(Demo& demo);
void skin(Demo& demo);
void webPages(Demo& demo);
void settings(Demo& demo);

void effects(Demo& demo);
void flashes(Demo& demo);

void publishGifts(Demo& demo);
void unchangedGifts(Demo& demo);
void tidying(Demo& demo);
void restartOffline(Demo& demo);

} // namespace Steps
