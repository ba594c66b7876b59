#pragma once

#include "client/ZGlobalClient.h"

#include <QJsonArray>
#include <QString>

#include <functional>

/** The tidying of the client's cache. */
namespace Tidying {

/** Runs it to its end, handing each of its log lines to tell as it comes. */
void run(ZGlobalClient& client, const std::function<void(const QString& line)>& tell);

/** What a run would do; throws a Failure. */
TidyPlan plan(ZGlobalClient& client);

/** On standard output: each folder, and what goes and stays in it. */
void print(const TidyPlan& plan);

/** The folders as objects; after a run each entry tells whether it is there still. */
QJsonArray asJson(const TidyPlan& plan, bool afterRun);

/** "3 of 40 entries, 1.2 MB": those that go. */
QString summary(const TidyPlan& plan);

} // namespace Tidying
