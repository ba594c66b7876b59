#include "inspector/parts/LineMasks.h"

#include "inspector/parts/Background.h"
#include "inspector/parts/CopiedRows.h"
#include "inspector/parts/EmptyNote.h"
#include "inspector/parts/Look.h"
#include "inspector/parts/RawTables.h"
#include "why/NearWords.h"
#include "why/RawTable.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

enum Column { Word, List, Covers, From, Place, ColumnCount };

constexpr int mostMasks = 200; // that are listed

QString older()
{
    return QStringLiteral("ChatFilterWordKey");
}

QString newer()
{
    return QStringLiteral("NewChatFilterWordKey");
}

QString tableOf(const stWordMask& mask)
{
    return mask.list == stWordMask::OlderList ? older() : newer();
}

QTableWidgetItem* item(const QVariant& value)
{
    auto* made = new QTableWidgetItem(value.toString());
    made->setData(Qt::UserRole, value);
    if (value.userType() == QMetaType::Int)
        made->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return made;
}

} // namespace

LineMasks::LineMasks(RawTables& files, QWidget* parent)
    : QWidget(parent)
    , m_files(files)
    , m_verdict(new QLabel)
    , m_fault(new QLabel)
    , m_masks(new QTableWidget)
    , m_near(new QLabel)
{
    m_verdict->setObjectName(QStringLiteral("verdict"));
    m_fault->setObjectName(QStringLiteral("fault"));
    m_near->setObjectName(QStringLiteral("near"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_verdict);
    layout->addWidget(m_fault);
    layout->addWidget(m_masks, 1);
    layout->addWidget(m_near);
    for (QLabel* label : {m_verdict, m_fault, m_near}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    m_masks->setObjectName(QStringLiteral("masks"));
    CopiedRows::setTitles(*m_masks, "LineMasks",
                          {QT_TR_NOOP("word"), QT_TR_NOOP("list"), QT_TR_NOOP("covers"),
                           QT_TR_NOOP("from"), QT_TR_NOOP("row")});
    m_masks->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_masks->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_masks->setTabKeyNavigation(false);
    m_masks->verticalHeader()->hide();
    m_masks->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_masks->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_masks->horizontalHeader()->setSectionResizeMode(Covers, QHeaderView::Stretch);
    CopiedRows::addActions(*m_masks);
    m_masks->setToolTip(tr("Enter or a double click leads to the word in its table"));
    connect(m_masks, &QTableWidget::itemActivated, this, [this](const QTableWidgetItem* item) {
        const stWordMask mask = m_line.masks.at(item->row());
        Q_EMIT sigOpen(QStringLiteral("tables"), tableOf(mask) + u'/' + mask.word);
    });
    connect(&files, &RawTables::sigRead, this, [this](const QString& table) {
        if (table == older() || table == newer())
            readTables();
    });
    explain({});
}

void LineMasks::explain(const ChatLines::Line& line)
{
    m_line = line;
    ++m_explained;
    if (line.nanoseconds < 0)
        m_verdict->setText(line.typed.isEmpty() ? tr("Nothing is typed yet.")
                                                : tr("“%1” waits for its turn").arg(line.typed));
    else if (line.masks.isEmpty())
        m_verdict->setText(tr("“%1” is shown as it is").arg(line.typed));
    else
        m_verdict->setText(tr("“%1” is shown as “%2”").arg(line.typed, line.shown));
    tellFaults();
    showMasks();
    m_near->hide();
    lookNear();
}

void LineMasks::tellFaults()
{
    QStringList faults {EmptyNote::faultOf(older()), EmptyNote::faultOf(newer())};
    faults.removeAll(QString());
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, Look::faultColour(colours));
    m_fault->setPalette(colours);
    m_fault->setText(faults.join(u'\n'));
    m_fault->setVisible(!faults.isEmpty());
}

void LineMasks::readTables()
{
    m_older = m_files.get(older());
    m_newer = m_files.get(newer());
    if (!isReading())
        explain(m_line);
}

QVariant LineMasks::rowOf(const stWordMask& mask) const
{
    const auto& list = mask.list == stWordMask::OlderList ? m_older : m_newer;
    const Why::RawRow* row = list == nullptr ? nullptr : list->find(mask.word);
    return row == nullptr ? QVariant() : row->row.number;
}

void LineMasks::showMasks()
{
    const QVector<stWordMask> masks = m_line.masks.mid(0, mostMasks);
    m_masks->setRowCount(static_cast<int>(masks.size()));
    for (int i = 0; i < masks.size(); ++i) {
        const stWordMask& mask = masks.at(i);
        const QString list = mask.list == stWordMask::OlderList ? tr("older") : tr("newer");
        m_masks->setItem(i, Word, item(mask.word));
        m_masks->setItem(i, List, item(list));
        m_masks->setItem(i, Covers, item(m_line.typed.mid(mask.start, mask.length)));
        m_masks->setItem(i, From, item(mask.start));
        m_masks->setItem(i, Place, item(rowOf(mask)));
        m_masks->item(i, Word)->setToolTip(
            tr("Enter or a double click shows it in %1").arg(tableOf(mask)));
    }
}

void LineMasks::lookNear()
{
    // One at a time: lists are long, and lines change with every key.
    if (m_isLooking || m_line.shown.isEmpty())
        return;
    m_isLooking = true;
    ZSensitiveWordsInfoListMgr* filter = ZSensitiveWordsInfoListMgr::getInstance();
    inBackground(
        *QThreadPool::globalInstance(), this,
        [shown = m_line.shown, olderWords = filter->getSensitiveWordsMap(),
         newerWords = filter->getNewSensitiveWordsMap()] {
            return NearWords::in(shown, olderWords.keys() + newerWords.keys());
        },
        [this, asked = m_explained](const QStringList& near) {
            m_isLooking = false;
            if (asked != m_explained) {
                lookNear();
                return;
            }
            m_near->setText(near.join(u'\n'));
            m_near->setVisible(!near.isEmpty());
        });
}
