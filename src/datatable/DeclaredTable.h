#pragma once

#include "datatable/LogCategories.h"
#include "datatable/TableColumns.h"
#include "datatable/TableParts.h"
#include "datatable/TableRows.h"
#include "datatable/TableSchema.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QVector>

#include <algorithm>
#include <functional>
#include <iterator>

/** A manager as an object, whichever form its getInstance() has. */
template <class Manager>
Manager& managerAt(Manager* manager)
{
    return *manager;
}
template <class Manager>
Manager& managerAt(Manager& manager)
{
    return manager;
}

/** Puts records into a map by a field, a later one replacing an earlier one of its key. */
template <class Record, class Field, class Key>
auto inserterInto(QHash<Key, Record>& map, Field field, const TableRows& rows)
{
    map.reserve(map.size() + rows.count());
    return [&map, field](Record&& record) {
        Record& place = map[record.*field];
        place = std::move(record);
    };
}

/** The same; mostly the rows are in the order of their keys, so each is tried behind the last. */
template <class Record, class Field, class Key>
auto inserterInto(QMap<Key, Record>& map, Field field, const TableRows&)
{
    using Place = typename QMap<Key, Record>::const_iterator;
    return [&map, field, place = map.constEnd()](Record&& record) mutable {
        const auto inserted = map.insert(place, record.*field, Record());
        *inserted = std::move(record);
        place = std::next(Place(inserted));
    };
}

/**
 * A table as data: its columns, then TableParts in any order: where the rows go, what is left out,
 * what is said and done after a load. Loading, the printing of records and the column reference all
 * run off the one declaration, which a manager makes in a static member function of its own, where
 * its containers can be named.
 */
template <class Manager, class Record, class Row = Record>
class DeclaredTable final : public TableDeclaration
{
public:
    template <class... Parts>
    explicit DeclaredTable(TableColumns<Row, Record> columns, const Parts&... parts)
        : m_columns(std::move(columns))
    {
        m_schema.columns = m_columns.schemas();
        (add(parts), ...);
        m_schema.duplicates = duplicates();
        m_schema.laterRowAnswers = m_inMap;
        m_schema.isEveryRowKept = m_inList || m_inGroups;
    }

    bool load(const QString& path) const override
    {
        Manager& manager = managerAt(Manager::getInstance());
        run(m_beforehand, manager);
        TableRows rows;
        if (!rows.read(path))
            return false;
        if (m_onceRead)
            m_onceRead(manager, rows);
        const auto table = m_columns.bind(rows);
        if (!table)
            return false;
        run(m_empty, manager);
        const QVector<Store> stores = storesFor(manager, rows);
        const Conditions leftOut = conditionsFor(rows);
        table->forEach([&](Row&& row, const QJsonArray& cells) {
            if (m_eachRow)
                m_eachRow(manager, row, cells);
            if (!anyHolds(leftOut, row))
                take(stores, std::move(row));
        });
        run(m_squeeze, manager);
        run(m_afterwards, manager);
        return true;
    }

    QStringList leftOutFor(const QHash<QString, int>& header,
                           const QJsonArray& elements) const override
    {
        TableRows rows;
        rows.header = header;
        rows.rows = elements;
        const auto table = m_columns.bind(rows);
        if (!table)
            return TableDeclaration::leftOutFor(header, elements);
        QStringList columns;
        table->forEach([&](const Row& row, const QJsonArray&) {
            columns.append(QString());
            for (const auto& rule : m_leftOut) {
                if (applies(rule, rows) && rule.condition(row))
                    columns.last() = rule.column;
            }
        });
        return columns;
    }

    int recordCount() const override
    {
        int count = 0;
        m_forEach(managerAt(Manager::getInstance()), [&count](const Record&) { ++count; });
        return count;
    }

    QJsonArray records() const override
    {
        QJsonArray records;
        m_forEach(managerAt(Manager::getInstance()),
                  [&](const Record& record) { records.append(m_columns.shown(record)); });
        return records;
    }

    TableSnapshot snapshot() const override
    {
        TableSnapshot snapshot = m_snapshot(managerAt(Manager::getInstance()));
        if (!m_inList && !m_inGroups) { // an unordered map changes its order with every load
            std::sort(snapshot.records.begin(), snapshot.records.end(),
                      [this](const void* left, const void* right) {
                          return compare(left, right, m_keyColumn) < 0;
                      });
        }
        return snapshot;
    }

    QVariant value(const void* record, int column) const override
    {
        return m_columns.value(*static_cast<const Record*>(record), column);
    }

    int compare(const void* left, const void* right, int column) const override
    {
        return m_columns.compare(*static_cast<const Record*>(left),
                                 *static_cast<const Record*>(right), column);
    }

private:
    using Steps = QVector<std::function<void(Manager&)>>;
    using Use = std::function<void(const Record&)>;
    using Conditions = QVector<std::function<bool(const Row&)>>;
    using Store = std::function<void(Record&&)>;

    struct LeavingOut
    {
        QString column;
        bool evenWithoutColumn;
        std::function<bool(const Row&)> condition;
    };

    static void run(const Steps& steps, Manager& manager)
    {
        for (const auto& step : steps)
            step(manager);
    }

    Conditions conditionsFor(const TableRows& rows) const
    {
        Conditions conditions;
        for (const auto& rule : m_leftOut) {
            if (applies(rule, rows))
                conditions.append(rule.condition);
        }
        return conditions;
    }

    static bool applies(const LeavingOut& rule, const TableRows& rows)
    {
        return rule.evenWithoutColumn || rows.header.contains(rule.column);
    }

    static bool anyHolds(const Conditions& conditions, const Row& row)
    {
        return std::any_of(conditions.begin(), conditions.end(),
                           [&row](const auto& condition) { return condition(row); });
    }

    /** Where the records of one load go. */
    QVector<Store> storesFor(Manager& manager, const TableRows& rows) const
    {
        QVector<Store> stores;
        for (const auto& store : m_stores)
            stores.append(store(manager, rows));
        return stores;
    }

    void take(const QVector<Store>& stores, Row&& row) const
    {
        if (m_make)
            keep(stores, m_make(std::move(row)));
        else
            keep(stores, std::move(row));
    }

    /** The last one has the record itself, the others have copies. */
    static void keep(const QVector<Store>& stores, Record&& record)
    {
        for (int i = 0; i + 1 < stores.size(); ++i)
            stores.at(i)(Record(record));
        if (!stores.isEmpty())
            stores.last()(std::move(record));
    }

    template <class Field, class Container>
    void add(const TableParts::KeyedBy<Field, Container>& part)
    {
        add(TableParts::JoinedBy {part.field, part.container});
        add(TableParts::Emptied {part.container});
    }

    template <class Field, class Container>
    void add(const TableParts::JoinedBy<Field, Container>& part)
    {
        m_stores.append([part](Manager& manager, const TableRows& rows) {
            return inserterInto<Record>(manager.*part.container, part.field, rows);
        });
        nameBy(part.field);
        m_inMap = true;
        if (!m_inList)
            showFrom(part.container);
    }

    template <class Container, class Field>
    void add(const TableParts::Listed<Container, Field>& part)
    {
        m_stores.append([part](Manager& manager, const TableRows& rows) {
            auto& list = manager.*part.container;
            list.reserve(rows.count());
            return [&list](Record&& record) { list.append(std::move(record)); };
        });
        // For the rows that are left out there was room too.
        m_squeeze.append([part](Manager& manager) { (manager.*part.container).squeeze(); });
        add(TableParts::Emptied {part.container});
        if constexpr (!std::is_null_pointer_v<Field>)
            nameBy(part.field);
        m_inList = true;
        showFrom(part.container);
    }

    template <class Field, class Container>
    void add(const TableParts::GroupedBy<Field, Container>& part)
    {
        m_stores.append([part](Manager& manager, const TableRows&) {
            auto& groups = manager.*part.container;
            return [&groups, part](Record&& record) {
                auto& group = groups[record.*part.field];
                group.append(std::move(record));
            };
        });
        add(TableParts::Emptied {part.container});
        m_inGroups = true;
        hold(part.container, [](const auto& groups, const auto& use) {
            for (const auto& group : groups) {
                for (const Record& record : group)
                    use(record);
            }
        });
    }

    template <class Field, class Condition>
    void add(const TableParts::LeftOut<Field, Condition>& part)
    {
        ColumnSchema& column = m_schema.columns[m_columns.indexOf(part.field)];
        column.remark = QString::fromUtf8(part.remark);
        m_leftOut.append({column.name, part.evenWithoutColumn, part.condition});
    }

    template <class Call>
    void add(const TableParts::MadeBy<Call>& part)
    {
        m_make = part.call;
    }

    template <class Call>
    void add(const TableParts::EachRow<Call>& part)
    {
        m_eachRow = part.call;
    }

    template <class Container>
    void add(const TableParts::Emptied<Container>& part)
    {
        m_empty.append([part](Manager& manager) { manager.*part.container = {}; });
    }

    template <class Call>
    void add(const TableParts::Beforehand<Call>& part)
    {
        m_beforehand.append(part.call);
    }

    template <class Call>
    void add(const TableParts::OnceRead<Call>& part)
    {
        m_onceRead = part.call;
    }

    template <class Call>
    void add(const TableParts::Afterwards<Call>& part)
    {
        m_afterwards.append(part.call);
    }

    void add(const TableParts::Logs& part)
    {
        m_afterwards.append([part](Manager&) {
            const QString line = QString::fromUtf8(part.line);
            if (part.channel == QtDebugMsg)
                qCDebug(LogCategories::load).noquote() << line;
            else
                qCInfo(LogCategories::load).noquote() << line;
        });
    }

    void add(const TableParts::Duplicates& part) { m_words = QString::fromUtf8(part.words); }

    template <class Field>
    void nameBy(Field field)
    {
        m_keyColumn = m_columns.indexOf(field);
        m_schema.key = m_schema.columns.at(m_keyColumn).name;
    }

    template <class Container>
    void showFrom(Container container)
    {
        hold(container, [](const auto& records, const auto& use) {
            for (const Record& record : records)
                use(record);
        });
    }

    /** Where the records are to be looked for; walk(container, use) calls use for each. */
    template <class Container, class Walk>
    void hold(Container container, Walk walk)
    {
        m_forEach = [=](const Manager& manager, const Use& use) { walk(manager.*container, use); };
        m_snapshot = [=](const Manager& manager) {
            using Held = std::decay_t<decltype(manager.*container)>;
            const auto held = std::make_shared<const Held>(manager.*container);
            TableSnapshot snapshot {{}, held};
            walk(*held, [&](const Record& record) { snapshot.records.append(&record); });
            return snapshot;
        };
    }

    QString duplicates() const
    {
        if (!m_words.isEmpty())
            return m_words;
        if (m_inGroups)
            return QStringLiteral("all are kept, in table order within their group");
        if (!m_inMap)
            return QStringLiteral("all are kept, in table order");
        return m_inList ? QStringLiteral("the map holds the later row, the list both")
                        : QStringLiteral("the later row replaces the earlier");
    }

    TableColumns<Row, Record> m_columns;
    Steps m_beforehand;
    std::function<void(Manager&, const TableRows&)> m_onceRead;
    Steps m_empty;
    std::function<void(Manager&, const Row&, const QJsonArray&)> m_eachRow;
    QVector<LeavingOut> m_leftOut;
    std::function<Record(Row&&)> m_make;
    QVector<std::function<Store(Manager&, const TableRows&)>> m_stores;
    Steps m_squeeze;
    Steps m_afterwards;
    std::function<void(const Manager&, const Use&)> m_forEach;
    std::function<TableSnapshot(const Manager&)> m_snapshot;
    int m_keyColumn = -1;
    bool m_inMap = false;
    bool m_inList = false;
    bool m_inGroups = false;
    QString m_words;
};
