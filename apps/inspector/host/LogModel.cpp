#include "inspector/host/LogModel.h"

#include "inspector/host/ColumnTitle.h"

#include <QMutex>

namespace {

constexpr int mostLines = 20000;
constexpr int linesForgotten = 2000; // at a time

int severityOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return 0;
    case QtInfoMsg:
        return 1;
    case QtWarningMsg:
        return 2;
    default:
        return 3;
    }
}

} // namespace

/** The lines on their way to the GUI thread. */
class LogModel::Queue
{
public:
    static Queue& instance()
    {
        // Never destroyed: other threads may have something to say until the process is gone.
        static Queue& queue = *new Queue;
        return queue;
    }

    QMutex mutex;
    LogModel* model = nullptr;
    QtMessageHandler before = nullptr;
    QVector<Line> lines;
};

LogModel::LogModel(QObject* parent)
    : QAbstractTableModel(parent)
{
    Queue& queue = Queue::instance();
    const QMutexLocker lock(&queue.mutex);
    queue.model = this;
    queue.before = qInstallMessageHandler(&LogModel::handle);
}

LogModel::~LogModel()
{
    Queue& queue = Queue::instance();
    const QMutexLocker lock(&queue.mutex);
    qInstallMessageHandler(queue.before);
    queue.model = nullptr;
    queue.lines.clear();
}

QString LogModel::nameOf(int severity)
{
    const QStringList names {tr("debug"), tr("info"), tr("warning"), tr("error")};
    return names.value(severity);
}

int LogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

int LogModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LogModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != valueRole))
        return {};
    const Line& line = m_lines.at(index.row());
    switch (index.column()) {
    case Time:
        return role == valueRole ? QVariant(line.time)
                                 : line.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case Severity:
        return role == valueRole ? QVariant(line.severity) : nameOf(line.severity);
    case Category:
        return line.category;
    default:
        return line.text;
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static constexpr const char* titles[] {QT_TR_NOOP("time"), QT_TR_NOOP("severity"),
                                           QT_TR_NOOP("part"), QT_TR_NOOP("line")};
    return orientation == Qt::Horizontal && section >= 0 && section < ColumnCount
        ? columnTitle(staticMetaObject.className(), titles[section], role)
        : QVariant();
}

void LogModel::handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    Queue& queue = Queue::instance();
    QtMessageHandler before = nullptr;
    {
        const QMutexLocker lock(&queue.mutex);
        before = queue.before;
        queue.lines.append({QDateTime::currentDateTime(), severityOf(type),
                            QString::fromUtf8(context.category), text});
        // Many lines at a time cost the views one insertion.
        if (queue.lines.size() == 1 && queue.model != nullptr)
            QMetaObject::invokeMethod(queue.model, "take", Qt::QueuedConnection);
    }
    if (before != nullptr)
        before(type, context, text);
}

void LogModel::take()
{
    QVector<Line> lines;
    {
        Queue& queue = Queue::instance();
        const QMutexLocker lock(&queue.mutex);
        lines.swap(queue.lines);
    }
    if (lines.isEmpty())
        return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(lines.size()) - 1);
    m_lines += lines;
    endInsertRows();
    const int forgotten = static_cast<int>(m_lines.size()) - mostLines;
    if (forgotten < linesForgotten)
        return;
    beginRemoveRows({}, 0, forgotten - 1);
    m_lines.remove(0, forgotten);
    endRemoveRows();
}
