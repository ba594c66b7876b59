#include "Measured.h"
#include "SampleTables.h"

#include "datatable/ZDataTableMgr.h"
#include "gift/ZGiftListMgr.h"
#include "models/ZRecordModel.h"

#include <benchmark/benchmark.h>

// A model over the gift table, the size in rows: what it costs to have one, to follow a reload, and
// to be asked for every cell. What the manager's load costs is not in it: that is the other side.

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

void loadAlone(State& state, int rows)
{
    for (auto _ : state)
        load(rows);
}

void make(State& state, int rows)
{
    load(rows);
    for (auto _ : state)
        benchmark::DoNotOptimize(ZRecordModel(gifts().table).rowCount());
}

/** A reload after which the table has this many rows instead of those. */
void follow(State& state, int before, int after)
{
    load(before);
    ZRecordModel model(gifts().table);
    for (auto _ : state) {
        state.PauseTiming();
        load(after);
        state.ResumeTiming();
        model.refresh();
        if (model.rowCount() != after)
            state.SkipWithError("the model did not follow");
        state.PauseTiming();
        load(before);
        model.refresh();
        state.ResumeTiming();
    }
}

void readAll(State& state, int rows)
{
    load(rows);
    const ZRecordModel model(gifts().table);
    for (auto _ : state) {
        for (int row = 0; row < model.rowCount(); ++row) {
            for (int column = 0; column < model.columnCount(); ++column)
                benchmark::DoNotOptimize(model.index(row, column).data());
        }
    }
    state.SetItemsProcessed(state.iterations() * rows * model.columnCount());
}

} // namespace

int main(int argc, char** argv)
{
    return Measured::run(argc, argv, [] {
        for (const int rows : {1000, 100000}) {
            const auto add = [rows](const char* subject, const char* side, const auto& function,
                                    auto... sizes) {
                benchmark::RegisterBenchmark(qPrintable(Measured::name(subject, side, rows)),
                                             function, sizes...)
                    ->Unit(benchmark::kMillisecond);
            };
            for (const char* subject : {"modelMade", "modelSame", "modelGrown"})
                add(subject, "load", loadAlone, rows);
            add("modelMade", "ours", make, rows);
            add("modelSame", "ours", follow, rows, rows);
            add("modelGrown", "ours", follow, rows / 2, rows);
            add("modelRead", "ours", readAll, rows);
        }
    });
}
