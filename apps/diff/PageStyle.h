#pragma once

#include <QString>

/** How the page of changes looks. */
QString pageStyle();
