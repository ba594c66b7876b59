#pragma once

#include "datatable/ZDataTableMgr.h"
#include "host/ZGlobalConfig.h"
#include "support/CacheName.h"
#include "support/Tables.h"

#include <QtTest>

#include <functional>

/**
 * Checks what the library answers, line by line: ["function", argument, ..., answer] calls the
 * function of that name; where no answer is written it is true. In a line, {address} stands for the
 * name of the cache file of what the address holds. Beside those that it is given it knows
 *
 *   ["config", key, text]           sets a value of the configuration
 *   ["version", table, number]      sets a table's version
 *   ["load", table, columns, rows]  has its manager load a table, as for tableBytes(); "*" are all
 *                                   columns that it knows, "required" those it insists on
 */
class Answers
{
public:
    struct Function
    {
        int parameters;
        std::function<QJsonValue(const QJsonArray&)> call;
    };
    using Functions = QHash<QString, Function>;

    explicit Answers(const Functions& functions)
        : m_functions(functions)
    {
        m_functions.insert(u"config"_s, of(std::function(config)));
        m_functions.insert(u"version"_s, of(std::function(version)));
        m_functions.insert(u"load"_s, of(std::function(load)));
    }

    void check(const QJsonArray& lines) const
    {
        QStringList answered;
        QStringList wanted;
        for (const QJsonValue& each : lines) {
            QJsonArray line = withCacheNames(each.toArray());
            const QString name = line.first().toString();
            QVERIFY2(m_functions.contains(name), qPrintable(name));
            const Function& function = m_functions[name];
            if (line.size() == function.parameters + 1)
                line.append(true);
            QCOMPARE(line.size(), function.parameters + 2);
            wanted.append(textOf(line));
            line.replace(line.size() - 1, function.call(line));
            answered.append(textOf(line));
        }
        QCOMPARE(answered, wanted);
    }

    template <class Result, class... Parameters>
    static Function of(const std::function<Result(Parameters...)>& function)
    {
        return of(function, std::index_sequence_for<Parameters...>());
    }

    template <class Manager, class Result, class... Parameters>
    static Function of(Result (Manager::*getter)(Parameters...))
    {
        return of(std::function<Result(Parameters...)>([getter](Parameters... arguments) -> Result {
            return std::invoke(getter, Manager::getInstance(), arguments...);
        }));
    }

    /** A field of the record that a getter answers. */
    template <class Manager, class Record, class Id, class Field>
    static Function of(Record (Manager::*getter)(Id), Field std::decay_t<Record>::*field)
    {
        return of(std::function<Field(Id)>(
            [=](Id id) { return std::invoke(getter, Manager::getInstance(), id).*field; }));
    }

private:
    template <class Result, class... Parameters, std::size_t... At>
    static Function of(const std::function<Result(Parameters...)>& function,
                       std::index_sequence<At...>)
    {
        return {sizeof...(Parameters), [function](const QJsonArray& line) {
                    return answer(function(argument<std::decay_t<Parameters>>(line.at(At + 1))...));
                }};
    }

    static QJsonArray withCacheNames(const QJsonArray& line)
    {
        QString text = textOf(line);
        static const QRegularExpression address(u"\\{(http[^}]*)\\}"_s);
        for (auto found = address.match(text); found.hasMatch(); found = address.match(text))
            text.replace(found.captured(), cacheName(found.captured(1)));
        return QJsonDocument::fromJson(text.toUtf8()).array();
    }

    template <class Type>
    static Type argument(const QJsonValue& cell)
    {
        if constexpr (std::is_same_v<Type, QJsonArray>)
            return cell.toArray();
        else if constexpr (std::is_enum_v<Type>)
            return Type(cell.toInt());
        else
            return cell.toVariant().value<Type>();
    }

    template <class Type>
    static QJsonValue answer(const Type& answer)
    {
        if constexpr (std::is_same_v<Type, QSet<QString>>) {
            QStringList names = answer.values();
            names.sort();
            return QJsonArray::fromStringList(names);
        } else {
            return QJsonValue::fromVariant(QVariant::fromValue(answer));
        }
    }

    static bool config(const QString& key, const QString& text)
    {
        ZGlobalConfig::getInstance().setConfig(key, text);
        return true;
    }

    static bool version(const QString& table, int version)
    {
        const auto kind = EDataTable::EDataTableType(statusOf(table).kind);
        return ZDataTableMgr::getInstance()->setTableVersion(kind, version, false);
    }

    static bool load(const QString& table, const QString& columns, const QJsonArray& rows)
    {
        const TableStatus status = statusOf(table);
        const QString path = ZTestFolder::write(u"table"_s, tableBytes(status, columns, rows));
        return status.declaration->load(path);
    }

    Functions m_functions;
};

/** A manager's getter under its own name. */
#define Z_ANSWER(manager, getter)                                                                  \
    {                                                                                              \
        QStringLiteral(#getter), Answers::of(&manager::getter)                                     \
    }
