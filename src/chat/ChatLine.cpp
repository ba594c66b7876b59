#include "chat/ChatLine.h"

ChatLine::ChatLine(const QString& text, bool traced)
    : m_text(text)
    , m_traced(traced)
{
    if (!traced)
        return;
    m_origins.reserve(text.size() + 1);
    for (int i = 0; i < text.size(); ++i)
        m_origins.append({i, 1});
    m_origins.append({text.size(), 0});
}

void ChatLine::mask(int rank, const Stretches& stretches)
{
    if (m_traced)
        trace(rank, stretches);
    QString masked;
    masked.reserve(m_text.size() + stretches.size());
    int copied = 0;
    for (const Stretch& stretch : stretches) {
        masked.append(m_text.constData() + copied, stretch.start - copied);
        masked.append(QLatin1Char('*'));
        copied = stretch.start + stretch.length;
    }
    masked.append(m_text.constData() + copied, m_text.size() - copied);
    m_text = masked;
}

void ChatLine::trace(int rank, const Stretches& stretches)
{
    QVector<Stretch> origins;
    origins.reserve(m_origins.size() + stretches.size());
    int copied = 0;
    for (const Stretch& stretch : stretches) {
        origins += m_origins.mid(copied, stretch.start - copied);
        copied = stretch.start + stretch.length;
        Stretch covered {m_origins.at(stretch.start).start, 0};
        if (stretch.length > 0) {
            const Stretch& last = m_origins.at(copied - 1);
            covered.length = last.start + last.length - covered.start;
        }
        origins.append(covered);
        m_masks.append({rank, covered});
    }
    m_origins = origins + m_origins.mid(copied);
}
