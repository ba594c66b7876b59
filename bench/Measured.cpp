#include "Measured.h"

#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

int Measured::run(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    QLoggingCategory::setFilterRules(QStringLiteral("zglobal.*=false"));
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    benchmark::RunSpecifiedBenchmarks();
    QDir::setCurrent(QDir::rootPath());
    return 0;
}
