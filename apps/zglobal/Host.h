#pragma once

#include "datatable/EDataTable.h"
#include "datatable/TableStatus.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QVector>

/**
 * What any program does that embeds the library: a working folder, the configuration, the start-up
 * order, learning the versions, updating.
 *
 * What cannot be done is thrown as a Failure.
 */
namespace Host {

/** --data, --server, --config and --verbose. */
QList<QCommandLineOption> options();

/** The configuration of a client of the content served at base, which has no slash at its end. */
QJsonObject configurationFor(const QString& base);

/**
 * Makes the folder the current directory, where the library keeps all its files. The values join
 * those of the last time, which are kept in the folder's "zglobal.json".
 */
void enter(const QString& folder, const QJsonObject& values);

/** The same as the command line says. */
void enter(const QCommandLineParser& line);

/** A line about the server and folder of this client. */
QString whereabouts();

/** Loads the tables in the order that the library wants, as far as they are on disk, and then those
 *  that it leaves to the program; false when an essential one is not there. */
bool load();

/**
 * Loads what the library does not load itself: the word lists of the chat filter, the award effects
 * and the award effects of activities. False when one of them is not on disk.
 */
bool loadOwnTables();

/** Fetches the award effects of activities, a table that has no version; throws a Failure. */
void fetchActivityAwards();

struct Learnt
{
    int told = 0;                                ///< how many versions the server told
    QVector<EDataTable::EDataTableType> changed; ///< those that were not known
};

/** Asks the content server for the versions of the tables. */
Learnt learnVersions();

/** Waits until the library has saved the versions learnt. */
void waitForSavedVersions();

struct Updated
{
    bool ok = false;
    QString error; ///< the library's words for what failed
    int requests = 0;
    qint64 bytes = 0;
};

/** Brings all tables up to date, with a progress bar; the one that the library does not wait for
 *  included. */
Updated updateTables();

/** A table's file in its current version. */
struct TableFile
{
    TableStatus report; ///< filled by tableFiles() only
    int version = 0;
    QString path;
    qint64 size = 0; ///< 0 when it is missing
};

TableFile fileOf(EDataTable::EDataTableType type);

/** Every table of the catalogue. */
QVector<TableFile> tableFiles();

} // namespace Host
