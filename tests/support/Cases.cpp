#include "support/Cases.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

QJsonArray casesOf(const char* file, const char* function)
{
    QFile data(QStringLiteral(ZGLOBAL_TEST_DATA "/%1.json").arg(QLatin1String(file)));
    const bool opened = data.open(QIODevice::ReadOnly);
    QJsonParseError error {};
    const QJsonDocument parsed = QJsonDocument::fromJson(data.readAll(), &error);
    const QJsonArray cases = parsed.object().value(QLatin1String(function)).toArray();
    if (!opened || cases.size() < 2)
        qFatal("%s has no cases of %s: %s at byte %d", qPrintable(data.fileName()), function,
               qPrintable(error.errorString()), static_cast<int>(error.offset));
    return cases;
}

struct ColumnType
{
    int type;
    bool (*fits)(const QJsonValue& cell);
    void (*addColumn)(const char* name);
};

template <class Type>
ColumnType columnType(bool (*fits)(const QJsonValue& cell))
{
    return {qMetaTypeId<Type>(), fits, [](const char* name) { QTest::addColumn<Type>(name); }};
}

ColumnType typeOf(const QJsonArray& cases, int column)
{
    for (const ColumnType& type :
         {columnType<QString>([](const QJsonValue& cell) { return cell.isString(); }),
          columnType<bool>([](const QJsonValue& cell) { return cell.isBool(); }),
          columnType<int>([](const QJsonValue& cell) { return cell.toInt(1) == cell.toInt(2); }),
          columnType<double>([](const QJsonValue& cell) { return cell.isDouble(); })}) {
        if (std::all_of(cases.begin() + 1, cases.end(),
                        [&](const QJsonValue& row) { return type.fits(row.toArray().at(column)); }))
            return type;
    }
    return columnType<QJsonValue>(nullptr);
}

} // namespace

QStringList Cases::rows(const char* file)
{
    const QJsonArray cases = casesOf(file, QTest::currentTestFunction());
    const QJsonArray names = cases.first().toArray();
    static QByteArrayList kept; // the table keeps pointers only
    QStringList tags;
    QVector<ColumnType> types;
    for (int column = 1; column < names.size(); ++column) {
        types.append(typeOf(cases, column));
        kept.append(names.at(column).toString().toUtf8());
        types.last().addColumn(kept.last().constData());
    }
    for (int at = 1; at < cases.size(); ++at) {
        const QJsonArray row = cases.at(at).toArray();
        if (row.size() != names.size())
            qFatal("%s: case %d has %d cells", file, at, static_cast<int>(row.size()));
        tags.append(row.first().toString());
        QTestData& data = QTest::newRow(qPrintable(tags.last()));
        for (int i = 0; i < types.size(); ++i) {
            QVariant cell = QVariant::fromValue(row.at(i + 1));
            if (types.at(i).fits != nullptr)
                cell = row.at(i + 1).toVariant();
            cell.convert(types.at(i).type);
            data.append(types.at(i).type, cell.constData());
        }
    }
    return tags;
}

QByteArray Cases::bytes(const QString& text)
{
    QByteArray bytes;
    for (const QChar character : text)
        bytes += character.unicode() < 0x100 ? QByteArray(1, character.toLatin1())
                                             : QString(character).toUtf8();
    return bytes;
}
