#pragma once

#include <QString>

class MainWindow;

/** Pictures of every page. */
namespace Screenshots {

/**
 * Once the window's first update is done, saves each scene of each page in the folder, in the light
 * and the dark palette ("tables.png", "tables-dark.png"), and ends the application: with 1 when a
 * picture could not be had.
 */
void take(MainWindow& window, const QString& folder);

} // namespace Screenshots
