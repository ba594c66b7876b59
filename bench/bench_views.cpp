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

// The desktop program's view over the gift table, the size in rows, painted without a display: from
// loaded records to the first paint, and page by page through all of them.

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

/** The view as a page has it. */
struct Shown
{
    Shown()
        : records(gifts().table)
    {
        filter.setSourceModel(&records);
        view.setModel(&filter);
        view.keepColumns(QString());
        view.resize(1000, 700);
        view.show();
    }

    void paint() { benchmark::DoNotOptimize(view.grab()); }

    ZRecordModel records;
    FilterModel filter;
    RecordView view;
};

void firstPaint(State& state, int rows)
{
    load(rows);
    for (auto _ : state)
        Shown().paint();
}

void scroll(State& state, int rows)
{
    load(rows);
    Shown shown;
    QScrollBar* bar = shown.view.verticalScrollBar();
    int pages = 0;
    for (auto _ : state) {
        pages = 0;
        for (int top = 0; top <= bar->maximum(); top += bar->pageStep(), ++pages) {
            bar->setValue(top);
            shown.paint();
        }
    }
    if (pages * bar->pageStep() < rows - bar->pageStep())
        state.SkipWithError("not all rows were shown");
    state.counters["pages"] = pages;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return Measured::run(argc, argv, [] {
        for (const int rows : {1000, 100000}) {
            const auto add = [rows](const char* subject, const auto& function) {
                benchmark::RegisterBenchmark(qPrintable(Measured::name(subject, "ours", rows)),
                                             function, rows)
                    ->Unit(benchmark::kMillisecond);
            };
            add("viewFirstPaint", firstPaint);
            add("viewScroll", scroll);
        }
    });
}
