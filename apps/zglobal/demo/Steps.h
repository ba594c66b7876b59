#pragma once

class Demo;

/** The steps of the demonstration, in the order in which they are run, by subject. */
namespace Steps {

void serveContent(Demo& demo);
void startClient(Demo& demo);
void learnVersions(Demo& demo);
void updateTables(Demo& demo);
void loadTables(Demo& demo);

void giftsOnSale(Demo& demo);
void giftPicture(Demo& demo);

void welcome(Demo& demo);
void fansTiers(Demo& demo);

void publishGifts(Demo& demo);
void unchangedGifts(Demo& demo);
void restartOffline(Demo& demo);

} // namespace Steps
