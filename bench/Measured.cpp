#include "Measured.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

int Measured::run(int argc, char** argv, const std::function<void()>& add)
{
    std::unique_ptr<QCoreApplication> application;
    if (QCoreApplication::instance() == nullptr)
        application = std::make_unique<QCoreApplication>(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    QLoggingCategory::setFilterRules(QStringLiteral("zglobal.*=false"));
    const QTemporaryDir folder;
    if (!folder.isValid() || !QDir::setCurrent(folder.path()))
        qFatal("cannot make a folder: %s", qPrintable(folder.errorString()));
    add();
    benchmark::RunSpecifiedBenchmarks();
    QDir::setCurrent(QDir::rootPath()); // a folder that is worked in cannot be removed everywhere
    return 0;
}

QString Measured::name(const char* subject, const char* side, int size)
{
    return QStringLiteral("%1/%2/%3").arg(QLatin1String(subject), QLatin1String(side)).arg(size);
}

void Measured::loaded(const TableDeclaration& table, const QByteArray& bytes)
{
    QFile file(QStringLiteral("table"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        qFatal("cannot write %s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
    if (!table.load(file.fileName()))
        qFatal("a table cannot be loaded");
}

void Measured::loaded(const TableDeclaration& table, std::initializer_list<const char*> columns,
                      const QJsonArray& rows)
{
    QJsonArray names;
    for (const char* column : columns)
        names.append(QLatin1String(column));
    loaded(table,
           QJsonDocument(
               QJsonObject {{QStringLiteral("columns"), names}, {QStringLiteral("rows"), rows}})
               .toJson());
}
