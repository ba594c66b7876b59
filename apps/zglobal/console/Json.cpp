#include "console/Json.h"

#include "console/Failure.h"
#include "console/Literals.h"
#include "console/Terminal.h"

#include <QFile>
#include <QSaveFile>

QJsonObject Json::objectOf(const QByteArray& text, const QString& source)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        throw Failure {u"%1 is not JSON: %2"_s.arg(source, error.errorString())};
    if (!document.isObject())
        throw Failure {u"%1 is not a JSON object"_s.arg(source)};
    return document.object();
}

QJsonObject Json::objectInFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure {u"%1 cannot be read: %2"_s.arg(path, file.errorString())};
    return objectOf(file.readAll(), path);
}

void Json::writeFile(const QString& path, const QJsonObject& object,
                     QJsonDocument::JsonFormat format)
{
    QSaveFile file(path);
    const QByteArray text = QJsonDocument(object).toJson(format);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        throw Failure {u"%1 cannot be written: %2"_s.arg(path, file.errorString())};
}

void Json::print(const QJsonObject& object)
{
    Terminal::print(QString::fromUtf8(QJsonDocument(object).toJson()).trimmed());
}

void Json::print(const QJsonArray& array)
{
    Terminal::print(QString::fromUtf8(QJsonDocument(array).toJson()).trimmed());
}

void Json::printLine(const QJsonObject& object)
{
    Terminal::print(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}
