#include "inspector/parts/EmptyNote.h"

#include "datatable/ZDataTableMgr.h"
#include "inspector/parts/Look.h"
#include "why/Subjects.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QVBoxLayout>

EmptyNote::EmptyNote(QAbstractItemView* view, const QString& table)
    : m_view(view)
    , m_table(table)
{
    setObjectName(QStringLiteral("empty"));
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    setForegroundRole(QPalette::WindowText); // not that of the view
    setAttribute(Qt::WA_TransparentForMouseEvents);
    (new QVBoxLayout(view->viewport()))->addWidget(this);
    const QAbstractItemModel* model = view->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyNote::tell);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyNote::tell);
    connect(model, &QAbstractItemModel::modelReset, this, &EmptyNote::tell);
    const ZDataTableMgr* tables = ZDataTableMgr::getInstance();
    connect(tables, &ZDataTableMgr::sigTableLoaded, this, &EmptyNote::tell);
    connect(tables, &ZDataTableMgr::sigTableFailed, this, &EmptyNote::tell);
    tell();
}

QString EmptyNote::faultOf(const QString& table)
{
    const QString fault = Why::loadFault(Why::statusOf(table));
    return fault.isEmpty() ? QString() : tr("%1 did not load: %2").arg(table, fault);
}

void EmptyNote::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        tell();
}

void EmptyNote::tell()
{
    setVisible(m_view->model()->rowCount() == 0);
    const QString fault = faultOf(m_table);
    setText(fault.isEmpty() ? tr("Nothing to show: %1 has no such row").arg(m_table) : fault);
    QPalette colours = m_view->palette();
    colours.setColor(QPalette::WindowText,
                     fault.isEmpty() ? colours.color(QPalette::PlaceholderText)
                                     : Look::faultColour(colours));
    setPalette(colours);
}
