#pragma once

#include <algorithm>
#include <vector>

/** What repeated measurements of one thing came to; to be asked when there is one. */
class Spread
{
public:
    void add(double value)
    {
        m_values.insert(std::upper_bound(m_values.begin(), m_values.end(), value), value);
    }
    double least() const { return m_values.front(); }
    double median() const { return m_values.at(m_values.size() / 2); }
    double most() const { return m_values.back(); }

private:
    std::vector<double> m_values; // sorted
};
