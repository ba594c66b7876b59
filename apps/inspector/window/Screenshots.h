#pragma once

#include <QString>

class MainWindow;

/** Pictures of every page. */
namespace Screenshots {

/**
 * Once the window's first update is done, saves each scene of each page in the folder, in the light
 * and the dark palette ("tables.png", "tables-dark.png"), and what can be read on each
 * ("texts.json", by the picture's name). Ends the application: with 1 when something could not be
 * written.
 */
void take(MainWindow& window, const QString& folder);

} // namespace Screenshots
