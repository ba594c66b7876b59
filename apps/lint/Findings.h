#pragma once

#include "lint/Rules.h"

#include <QString>
#include <QStringList>
#include <QVector>

/** Where something was found; the later parts are 0 or empty when it is about more than them. */
struct Place
{
    QString table;
    int row = 0; ///< from 1; what stands in place of a row counts
    QString column;
};

/** What a rule has to say of the content. */
struct Finding
{
    QString rule;
    Severity severity = Severity::Error;
    Place place;
    QString message; ///< names the cell, and what a client makes of it
};

/** Collects what is found, but for the rules that are silenced. */
class Findings
{
public:
    explicit Findings(const QStringList& silenced = {})
        : m_silenced(silenced)
    {
    }

    void add(Rule rule, const Place& place, const QString& message)
    {
        const RuleInfo& info = Rules::info(rule);
        const QString name = QString::fromLatin1(info.name);
        if (!m_silenced.contains(name))
            m_all.append({name, info.severity, place, message});
    }

    const QVector<Finding>& all() const { return m_all; }

private:
    QStringList m_silenced;
    QVector<Finding> m_all;
};
