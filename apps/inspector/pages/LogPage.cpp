#include "inspector/pages/LogPage.h"

#include "inspector/host/LogModel.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/RecordView.h"
#include "inspector/parts/SearchBox.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

class LogPage::BySeverity : public QSortFilterProxyModel
{
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setLeast(int severity)
    {
        m_least = severity;
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& /*parent*/) const override
    {
        const QModelIndex severity = sourceModel()->index(row, LogModel::Severity);
        return severity.data(LogModel::valueRole).toInt() >= m_least;
    }

private:
    int m_least = 0;
};

LogPage::LogPage(const Inspected& inspected, QWidget* parent)
    : Page(parent)
    , m_bySeverity(new BySeverity(this))
    , m_filter(new FilterModel(this))
    , m_view(new RecordView)
{
    m_bySeverity->setSourceModel(&inspected.log);
    m_filter->setSourceModel(m_bySeverity);
    m_view->setObjectName(QStringLiteral("lines"));
    m_view->setModel(m_filter);
    m_view->keepColumns(QStringLiteral("log"));
    m_view->horizontalHeader()->setStretchLastSection(true);
    auto* search = new SearchBox;
    connect(search, &QLineEdit::textChanged, m_filter, &FilterModel::setSearch);
    auto* least = new QComboBox;
    least->setObjectName(QStringLiteral("severity"));
    for (int severity = 0; severity < 4; ++severity)
        least->addItem(severity < 3 ? tr("%1 and worse").arg(LogModel::nameOf(severity))
                                    : LogModel::nameOf(severity));
    connect(least, QOverload<int>::of(&QComboBox::currentIndexChanged), m_bySeverity,
            &BySeverity::setLeast);

    // Who looks at the end stays there; who has scrolled back is left in peace.
    connect(m_filter, &QAbstractItemModel::rowsAboutToBeInserted, this, [this] {
        const QScrollBar* bar = m_view->verticalScrollBar();
        m_atEnd = bar->value() == bar->maximum();
    });
    connect(
        m_filter, &QAbstractItemModel::rowsInserted, this,
        [this] {
            if (m_atEnd)
                m_view->scrollToBottom();
        },
        Qt::QueuedConnection);
    auto* top = new QHBoxLayout;
    top->addWidget(least);
    top->addWidget(search, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_view);
    QTimer::singleShot(0, m_view, &QAbstractItemView::scrollToBottom); // once it has its size
    setFirst(m_view);
    // The keys begin there, too.
    m_view->selectionModel()->setCurrentIndex(m_filter->index(m_filter->rowCount() - 1, 0),
                                              QItemSelectionModel::NoUpdate);
}
