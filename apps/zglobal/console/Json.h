#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

/** JSON as the program reads and prints it. */
namespace Json {

/** The object that a text holds; throws a Failure that names the source where it is none. */
QJsonObject objectOf(const QByteArray& text, const QString& source);
QJsonObject objectInFile(const QString& path);

/** Writes the file whole or not at all; throws a Failure. */
void writeFile(const QString& path, const QJsonObject& object,
               QJsonDocument::JsonFormat format = QJsonDocument::Indented);

/** On standard output, indented. */
void print(const QJsonObject& object);
void print(const QJsonArray& array);

/** On one line of standard output. */
void printLine(const QJsonObject& object);

} // namespace Json
