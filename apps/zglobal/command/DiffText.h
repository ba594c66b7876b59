#pragma once

#include "diff/Changes.h"

#include <QStringList>
#include <QVector>

/** Changes for people: as wide as the terminal and in its colours, or plain and uncut in a pipe. */
namespace DiffText {

/** The tables that differ, each with its records and files. */
QStringList lines(const QVector<TableChange>& changes);

} // namespace DiffText
