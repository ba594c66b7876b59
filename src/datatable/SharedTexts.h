#pragma once

#include <QHash>
#include <QString>

#include <array>

/**
 * Makes equal texts one, as far as they were met lately.
 *
 * Most texts of a table are the same few again and again, and each is read as a text of its own.
 * One that comes once only, as ids and names do, drives out whichever happens to be in its place;
 * so what is remembered stays small, and some texts are had twice.
 */
class SharedTexts
{
public:
    void share(QString& text)
    {
        if (text.isEmpty())
            return;
        QString& met = m_met[qHash(text) % m_met.size()];
        if (met == text)
            text = met;
        else
            met = text;
    }

private:
    std::array<QString, 256> m_met;
};
