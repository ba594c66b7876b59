#include "inspector/parts/ShownTables.h"

#include "inspector/parts/Look.h"
#include "why/Subjects.h"

#include <QGuiApplication>
#include <QLocale>
#include <QPalette>

ShownTables::ShownTables(QObject* parent)
    : QIdentityProxyModel(parent)
{
    setSourceModel(&m_tables);
}

bool ShownTables::isFaulty(int row) const
{
    const TableStatus status = m_tables.status(row);
    const bool isMissing = status.kind >= 0 && status.size == 0;
    return !status.manager.isEmpty() && (status.state != TableStatus::Loaded || isMissing);
}

QVariant ShownTables::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const TableStatus status = m_tables.status(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return shown(index);
    case Qt::ForegroundRole:
        if (isFaulty(index.row()))
            return Look::faultColour(QGuiApplication::palette());
        return status.manager.isEmpty() ? Look::unreadColour(QGuiApplication::palette())
                                        : QVariant();
    case Qt::TextAlignmentRole: {
        const int column = index.column();
        const bool isNumber = column == ZTableModel::Version || column == ZTableModel::Size
            || column == ZTableModel::Records || column == ZTableModel::Kind;
        return isNumber ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    }
    case Qt::ToolTipRole:
        return Look::toolTip(toolTipOf(index).toString());
    default:
        return QIdentityProxyModel::data(index, role);
    }
}

QVariant ShownTables::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::UserRole) // by which programs know the column
        return QIdentityProxyModel::headerData(section, orientation, Qt::DisplayRole);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QIdentityProxyModel::headerData(section, orientation, role);
    const QStringList names {tr("table"),     tr("kind"),     tr("version"), tr("size"),
                             tr("age"),       tr("records"),  tr("state"),   tr("read by"),
                             tr("loader"),    tr("at start"), tr("file"),    tr("what is wrong"),
                             tr("last fault")};
    return names.value(section);
}

bool ShownTables::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const bool isOther = index.data(Qt::EditRole) != value;
    const bool isSet = isOther && QIdentityProxyModel::setData(index, value, role);
    if (isSet)
        Q_EMIT sigVersionWritten();
    return isSet;
}

QVariant ShownTables::shown(const QModelIndex& index) const
{
    const TableStatus status = m_tables.status(index.row());
    QVariant value = QIdentityProxyModel::data(index, ZTableModel::ValueRole);
    switch (index.column()) {
    case ZTableModel::Kind:
        return status.kind < 0 ? QString() : QString::number(status.kind);
    case ZTableModel::Version:
        return status.kind < 0 ? QString() : QString::number(status.version);
    case ZTableModel::Size:
        return status.size == 0 ? tr("missing") : Look::size(status.size);
    case ZTableModel::Modified: {
        const QDateTime modified = value.toDateTime();
        if (!modified.isValid())
            return {};
        const qint64 seconds = modified.secsTo(QDateTime::currentDateTime());
        if (seconds < 0) // by another clock
            return QLocale().toString(modified, QLocale::ShortFormat);
        return seconds < 120   ? tr("%1 s").arg(seconds)
            : seconds < 7200   ? tr("%1 min").arg(seconds / 60)
            : seconds < 172800 ? tr("%1 h").arg(seconds / 3600)
                               : tr("%1 days").arg(seconds / 86400);
    }
    case ZTableModel::Records:
        return value.isValid() ? QString::number(value.toInt()) : QString();
    case ZTableModel::State:
        return stateOf(status);
    case ZTableModel::AtStart:
        return status.loadedAtStart ? tr("yes") : tr("no");
    case ZTableModel::Error:
        return causeOf(status);
    default:
        return value;
    }
}

QString ShownTables::stateOf(const TableStatus& status)
{
    if (status.manager.isEmpty())
        return tr("not read");
    switch (status.state) {
    case TableStatus::Loaded:
        return tr("loaded");
    case TableStatus::Failed:
        return tr("failed");
    default:
        return tr("not loaded");
    }
}

QString ShownTables::causeOf(const TableStatus& status) const
{
    const QString& fetched = status.lastFailure.cause;
    if (status.kind >= 0 && status.size == 0)
        return fetched.isEmpty() ? tr("%1 is not there").arg(status.path) : fetched;
    const QString fault = status.manager.isEmpty() ? QString() : Why::loadFault(status);
    return fault.isEmpty() ? status.error : fault;
}

QVariant ShownTables::toolTipOf(const QModelIndex& index) const
{
    const QString cause = causeOf(m_tables.status(index.row()));
    if (index.column() == ZTableModel::Modified && cause.isEmpty())
        return QLocale().toString(
            QIdentityProxyModel::data(index, ZTableModel::ValueRole).toDateTime(),
            QLocale::ShortFormat);
    return cause;
}
