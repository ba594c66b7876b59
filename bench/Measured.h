#pragma once

#include "datatable/TableSchema.h"

#include <QByteArray>
#include <QJsonArray>

#include <functional>
#include <initializer_list>

/**
 * What the programs of figures share. A benchmark is called subject/side/size: its side is "ours"
 * or what ours is compared with in the same run. Figures that are no times are counters.
 */
namespace Measured {

/** Calls add, which adds benchmarks, and runs what the command line says; what main() returns.
 * Makes the application, unless there is one. */
int run(
    int argc, char** argv, const std::function<void()>& add = [] {});

QString name(const char* subject, const char* side, int size);

/** Loads a table, or ends the program. */
void loaded(const TableDeclaration& table, const QByteArray& bytes);
void loaded(const TableDeclaration& table, std::initializer_list<const char*> columns,
            const QJsonArray& rows);

/** Ends the program unless both sides give the same answer, before either is timed. */
template <class Answer>
void same(const char* subject, const Answer& ours, const Answer& theirs)
{
    if (!(ours == theirs))
        qFatal("%s: the two sides disagree", subject);
}

} // namespace Measured
