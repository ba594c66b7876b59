#include "Measured.h"
#include "SampleTables.h"

#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "inspector/parts/FilterModel.h"
#include "inspector/parts/RecordView.h"
#include "models/ZRecordModel.h"

#include <QApplication>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <map>

// The desktop program's view over the gift table, the size in rows, painted without a display: from
// loaded records to the first paint, and page by page through all of them. The other side is Qt's
// own view over the same texts, ready to be drawn. A screen's frame is a sixtieth of a second.

namespace {

using benchmark::State;

TableStatus gifts()
{
    return ZDataTableMgr::getInstance()->getTableStatus(EDataTable::CS_GiftList);
}

void load(int rows)
{
    Measured::loaded(ZGiftListMgr::declaration(), SampleTables::bytes(gifts(), rows));
}

void show(QTableView& view)
{
    view.resize(1000, 700);
    view.show();
}

void paint(QTableView& view)
{
    benchmark::DoNotOptimize(view.grab());
}

/** The view as a page has it. */
struct Shown
{
    Shown()
        : records(gifts().table)
    {
        filter.setSourceModel(&records);
        view.setModel(&filter);
        view.keepColumns(QString());
        show(view);
    }

    ZRecordModel records;
    FilterModel filter;
    RecordView view;
};

/** What a model gives to be drawn, and nothing else. */
class Texts : public QAbstractTableModel
{
public:
    explicit Texts(const QAbstractItemModel& model)
        : m_columns(model.columnCount())
    {
        for (int row = 0; row < model.rowCount(); ++row) {
            for (int column = 0; column < m_columns; ++column)
                m_texts.append(model.index(row, column).data().toString());
        }
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_texts.size()) / m_columns;
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : m_columns;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        return role == Qt::DisplayRole ? m_texts.at(index.row() * m_columns + index.column())
                                       : QVariant();
    }

private:
    int m_columns;
    QVector<QString> m_texts;
};

/** Those of the gift table; made once, since it takes longer than what is measured. */
Texts& texts(int rows)
{
    static std::map<int, Texts> made;
    const auto found = made.find(rows);
    if (found != made.end())
        return found->second;
    load(rows);
    return made.try_emplace(rows, ZRecordModel(gifts().table)).first->second;
}

struct Plain
{
    explicit Plain(int rows)
    {
        view.setModel(&texts(rows));
        show(view);
    }

    QTableView view;
};

void countFrames(State& state, double each)
{
    state.counters["frames"] = benchmark::Counter(
        each / 60, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void firstPaint(State& state, int rows)
{
    load(rows);
    for (auto _ : state) {
        Shown shown;
        paint(shown.view);
    }
    countFrames(state, 1);
}

void firstPaintPlain(State& state, int rows)
{
    texts(rows);
    for (auto _ : state) {
        Plain plain(rows);
        paint(plain.view);
    }
}

void scrollThrough(State& state, QTableView& view, int rows)
{
    QScrollBar* bar = view.verticalScrollBar();
    int pages = 0;
    for (auto _ : state) {
        pages = 0;
        for (int top = 0; top <= bar->maximum(); top += bar->pageStep(), ++pages) {
            bar->setValue(top);
            paint(view);
        }
    }
    if (pages * bar->pageStep() < rows - bar->pageStep())
        state.SkipWithError("not all rows were shown");
    countFrames(state, pages);
}

void scrollOurs(State& state, int rows)
{
    load(rows);
    Shown shown;
    scrollThrough(state, shown.view, rows);
}

void scrollPlain(State& state, int rows)
{
    Plain plain(rows);
    scrollThrough(state, plain.view, rows);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return Measured::run(argc, argv, [] {
        for (const int rows : {1000, 100000}) {
            const auto add = [rows](const char* subject, const char* side, const auto& function) {
                benchmark::RegisterBenchmark(qPrintable(Measured::name(subject, side, rows)),
                                             function, rows)
                    ->Unit(benchmark::kMillisecond);
            };
            add("viewFirstPaint", "ours", firstPaint);
            add("viewFirstPaint", "plain", firstPaintPlain);
            add("viewScroll", "ours", scrollOurs);
            add("viewScroll", "plain", scrollPlain);
        }
    });
}
