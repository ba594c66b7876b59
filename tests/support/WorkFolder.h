#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVector>

/** A working folder of a test's own: current while the object lives, gone with it. */
class WorkFolder
{
public:
    WorkFolder();
    ~WorkFolder();
    Q_DISABLE_COPY(WorkFolder)

    /** Writes a file below the folder, with the folders on its way; answers its path. */
    static QString write(const QString& path, const QByteArray& bytes);
    static QByteArray read(const QString& path);

    /** The bytes of a table file; a row is an array of cells or null. */
    static QByteArray table(const QStringList& columns, const QVector<QJsonValue>& rows);

    /** The files below a folder, relative to it and sorted. */
    static QStringList files(const QString& folder = QStringLiteral("."));

private:
    QTemporaryDir m_folder;
    QString m_previous;
};
