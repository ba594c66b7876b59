#pragma once

#include "publish/Plan.h"
#include "publish/PublishedTree.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QJsonObject>
#include <QList>
#include <QString>

/** What the commands that publish share. */
namespace Publishing {

/** --dry-run, --keep, --json and --verbose. */
QList<QCommandLineOption> options();

bool isTrial(const QCommandLineParser& line);
int keptBy(const QCommandLineParser& line);

/** Throws a Failure where there is a fault. */
void check(const QString& fault);

/** The tree with its lock, unless nothing is to be written. */
void openFor(const QCommandLineParser& line, PublishedTree& tree);

/** Prints what the plan changes, and publishes it unless that is only tried; answers the release's
 *  number, or 0. */
int carryOut(const QCommandLineParser& line, Plan& plan, PublishedTree& tree);

/** A bar while files are written, and the way out on Ctrl-C. */
PublishedTree::Progress progress();

/** "CS_GiftList 57 -> 58". */
QString textOf(const VersionChange& change);

} // namespace Publishing
