#include "inspector/parts/Gallery.h"

#include "inspector/host/ClientHost.h"
#include "inspector/parts/Column.h"
#include "inspector/parts/EmptyNote.h"
#include "inspector/parts/ExplanationView.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/KeptSplitter.h"
#include "inspector/parts/Pictures.h"
#include "inspector/parts/SearchBox.h"
#include "models/ZRecordModel.h"

#include <QVBoxLayout>

namespace {

constexpr QSize pictureSize(64, 64);

} // namespace

/** In the order of the keys. */
class Gallery::ByKey : public FilterModel
{
public:
    explicit ByKey(ZRecordModel* records, QObject* parent)
        : FilterModel(parent)
    {
        setSourceModel(records);
        sort(0);
    }

    QString key(const QModelIndex& shown) const { return keyOf(mapToSource(shown)); }

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override
    {
        return isBefore(keyOf(left), keyOf(right));
    }

private:
    static QString keyOf(const QModelIndex& record)
    {
        const auto* records = static_cast<const ZRecordModel*>(record.model());
        return records == nullptr ? QString() : records->key(record.row());
    }
};

Gallery::Gallery(ClientHost& host, Pictures& pictures, const QString& table, WearableOf wearableOf,
                 QWidget* parent)
    : QWidget(parent)
    , m_wearableOf(wearableOf)
    , m_records(new ZRecordModel(table, this))
    , m_filter(new ByKey(m_records, this))
    , m_view(new TileView)
    , m_search(new SearchBox)
    , m_moving(new AnimationBox)
    , m_explanation(new ExplanationView)
{
    m_view->setObjectName(QStringLiteral("tiles"));
    m_view->setItemDelegate(new TileDelegate(
        pictures, pictureSize,
        [this](const QModelIndex& shown) { return m_wearableOf(m_filter->key(shown)).tile; },
        m_view));
    m_view->setModel(m_filter);
    new EmptyNote(m_view, table);
    auto* parts = new KeptSplitter(table, Qt::Horizontal,
                                   {column({m_search, m_view}), column({m_moving, m_explanation})},
                                   {790, 330});
    parts->setStretchFactor(0, 1);
    (new QVBoxLayout(this))->addWidget(parts);
    connect(m_search, &QLineEdit::textChanged, m_filter, &FilterModel::setSearch);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& shown) {
                m_selected = m_filter->key(shown);
                tell();
            });
    connect(m_explanation, &ExplanationView::sigOrigin, this, &Gallery::sigOrigin);
    connect(m_moving, &AnimationBox::sigFetched, this, &Gallery::tell);
    connect(&host, &ClientHost::sigFilesChanged, this, &Gallery::refresh);
    connect(&pictures, &Pictures::sigLoaded, this, [this](const QString& path) {
        if (!m_selected.isEmpty() && path == m_wearableOf(m_selected).tile.path)
            tell(); // which says whether it is there
    });
    m_explanation->setPlaceholderText(tr("Select one to see it in full."));
}

bool Gallery::select(const QString& key)
{
    const int row = m_records->rowOf(key);
    if (row < 0)
        return false;
    m_search->clear();
    const QModelIndex shown = m_filter->mapFromSource(m_records->index(row, 0));
    m_view->setCurrentIndex(shown);
    m_view->scrollTo(shown);
    return true;
}

void Gallery::refresh()
{
    m_view->viewport()->update(); // addresses carry versions
    if (!m_selected.isEmpty())
        tell();
}

void Gallery::tell()
{
    const Wearables::Wearable shown = m_wearableOf(m_selected);
    m_moving->show(shown.moving);
    m_explanation->show(Why::Reply {{shown.explanation}, {}, {}});
}
