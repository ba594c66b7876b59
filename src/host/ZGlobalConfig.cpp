#include "host/ZGlobalConfig.h"

#include "file/JsonText.h"
#include "host/HostLimits.h"
#include "host/TableFormat.h"
#include "host/Unpacker.h"

#include <QFile>

namespace {

bool report(const QString& cause, QString* error)
{
    if (error != nullptr && !cause.isEmpty())
        *error = cause;
    return cause.isEmpty();
}

QString named(const QString& path, const QString& cause)
{
    return cause.isEmpty() ? cause : QStringLiteral("%1: %2").arg(path, cause);
}

/** The whole file, but never more than a byte above the limit: some files have no end. */
QString readWhole(const QString& path, QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    // What is asked for is allocated, there or not; so it is little for a small file.
    const qint64 block = qBound(qint64(4096), file.size() + 1, qint64(256) * 1024);
    QByteArray more;
    do {
        more = file.read(qMin(block, HostLimits::maxTableBytes + 1 - bytes.size()));
        bytes += more;
    } while (!more.isEmpty() && bytes.size() <= HostLimits::maxTableBytes);
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

QString valueText(const QJsonValue& value)
{
    if (value.isString())
        return value.toString();
    // As an integer where it is one: an id of 17 digits does not survive as a double.
    const QVariant number = value.toVariant();
    return number.type() == QVariant::Double
        ? QString::number(number.toDouble(), 'f', QLocale::FloatingPointShortest)
        : number.toString();
}

QString parseValues(const QByteArray& bytes, QHash<QString, QString>& values)
{
    QJsonObject object;
    QString error = JsonText::parse(bytes, object);
    if (!error.isEmpty())
        return error;
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        if (!it.value().isString() && !it.value().isDouble())
            return QStringLiteral("the value of \"%1\" is neither text nor a number").arg(it.key());
        values.insert(it.key(), valueText(it.value()));
    }
    return {};
}

} // namespace

ZGlobalConfig& ZGlobalConfig::getInstance()
{
    static ZGlobalConfig instance;
    return instance;
}

QString ZGlobalConfig::getConfig(const QString& key) const
{
    return m_values.value(key);
}

void ZGlobalConfig::setConfig(const QString& key, const QString& value)
{
    m_values.insert(key, value);
}

bool ZGlobalConfig::loadConfig(const QString& path, QString* error)
{
    QByteArray bytes;
    QHash<QString, QString> values = m_values;
    QString cause = readWhole(path, bytes);
    if (cause.isEmpty())
        cause = parseValues(bytes, values);
    if (!report(named(path, cause), error))
        return false;
    m_values = values;
    return true;
}

bool ZGlobalConfig::readTableFile(const QString& path, QHash<QString, int>& header,
                                  QJsonArray& rows)
{
    return readTableFile(path, header, rows, nullptr);
}

bool ZGlobalConfig::readTableFile(const QByteArray& bytes, QHash<QString, int>& header,
                                  QJsonArray& rows)
{
    return readTableFile(bytes, header, rows, nullptr);
}

bool ZGlobalConfig::readTableFile(const QString& path, QHash<QString, int>& header,
                                  QJsonArray& rows, QString* error)
{
    QByteArray bytes;
    QString cause = readWhole(path, bytes);
    if (cause.isEmpty())
        cause = TableFormat::parse(bytes, header, rows);
    return report(named(path, cause), error);
}

bool ZGlobalConfig::readTableFile(const QByteArray& bytes, QHash<QString, int>& header,
                                  QJsonArray& rows, QString* error)
{
    return report(TableFormat::parse(bytes, header, rows), error);
}

bool ZGlobalConfig::unZipFile(const QString& path, bool overwrite)
{
    return unZipFile(path, overwrite, nullptr);
}

bool ZGlobalConfig::unZipFile(const QString& path, bool overwrite, QString* error)
{
    return report(named(path, Unpacker(path).unpack(overwrite)), error);
}
