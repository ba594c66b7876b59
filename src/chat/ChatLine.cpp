#include "chat/ChatLine.h"

ChatLine::ChatLine(const QString& text, bool traced)
    : m_length(text.size())
    , m_traced(traced)
{
    m_pieces.reserve(m_length / pieceLength + 1);
    int begin = 0;
    do {
        Piece piece {m_length <= pieceLength ? text : text.mid(begin, pieceLength), {}};
        for (int i = 0; traced && i < piece.text.size(); ++i)
            piece.origins.append({begin + i, 1});
        m_pieces.append(piece);
        begin += pieceLength;
    } while (begin < m_length);
}

QString ChatLine::text() const
{
    return pieces(0, m_pieces.size() - 1, 0, 0, 0).text;
}

ChatLine::Window ChatLine::window(Place from, Place to, int before, int after, int firstPiece) const
{
    int missing = before;
    for (;;) {
        const int taken = qMin(missing, from.offset);
        missing -= taken;
        from.offset -= taken;
        if (missing == 0 || from.piece == firstPiece)
            break;
        from.offset = pieceSize(--from.piece);
    }
    for (;;) {
        const int taken = qMin(after, pieceSize(to.piece) - to.offset);
        after -= taken;
        to.offset += taken;
        if (after == 0 || to.piece + 1 == m_pieces.size())
            break;
        to = {to.piece + 1, 0};
    }
    Window window {{}, from, before - missing};
    if (from.piece == to.piece) {
        window.text = m_pieces.at(from.piece).text.mid(from.offset, to.offset - from.offset);
        return window;
    }
    int size = to.offset - from.offset;
    for (int piece = from.piece; piece < to.piece; ++piece)
        size += pieceSize(piece);
    window.text.reserve(size);
    for (int piece = from.piece; piece <= to.piece; ++piece) {
        const int begin = piece == from.piece ? from.offset : 0;
        const int end = piece == to.piece ? to.offset : pieceSize(piece);
        window.text.append(m_pieces.at(piece).text.constData() + begin, end - begin);
    }
    return window;
}

ChatLine::Window ChatLine::pieces(int first, int last, int before, int after, int firstPiece) const
{
    return window({first, 0}, {last, pieceSize(last)}, before, after, firstPiece);
}

ChatLine::Places ChatLine::mask(int rank, const Window& window, const Stretches& stretches)
{
    const int firstMask = m_masks.size();
    if (m_traced)
        trace(rank, window, stretches);
    Places asterisks;
    int begin = -window.begin.offset; // of the piece, counted in the window
    int maskedTo = begin;
    for (int number = window.begin.piece; number < m_pieces.size(); ++number) {
        if (asterisks.size() == stretches.size() && maskedTo <= begin)
            break;
        const Piece old = m_pieces.at(number);
        const int end = begin + old.text.size();
        const bool last = number + 1 == m_pieces.size();
        Piece masked;
        masked.text.reserve(old.text.size() + 1);
        int copied = qBound(begin, maskedTo, end);
        const auto copyTo = [&](int position) {
            masked.text.append(old.text.constData() + copied - begin, position - copied);
            if (m_traced)
                masked.origins += old.origins.mid(copied - begin, position - copied);
        };
        while (asterisks.size() < stretches.size()) {
            const Stretch& stretch = stretches.at(asterisks.size());
            if (stretch.start >= end && !last)
                break;
            copyTo(stretch.start);
            if (m_traced)
                masked.origins.append(m_masks.at(firstMask + asterisks.size()).covered);
            asterisks.append({number, static_cast<int>(masked.text.size())});
            masked.text.append(QLatin1Char('*'));
            maskedTo = stretch.start + stretch.length;
            copied = qMin(maskedTo, end);
        }
        copyTo(end);
        m_pieces[number] = masked;
        begin = end;
    }
    return asterisks;
}

void ChatLine::trace(int rank, const Window& window, const Stretches& stretches)
{
    int piece = window.begin.piece;
    int begin = -window.begin.offset;
    const auto originOf = [&](int position) {
        while (position >= begin + pieceSize(piece) && piece + 1 < m_pieces.size())
            begin += pieceSize(piece++);
        return m_pieces.at(piece).origins.value(position - begin, {m_length, 0});
    };
    for (const Stretch& stretch : stretches) {
        Stretch covered {originOf(stretch.start).start, 0};
        if (stretch.length > 0) {
            const Stretch last = originOf(stretch.start + stretch.length - 1);
            covered.length = last.start + last.length - covered.start;
        }
        m_masks.append({rank, covered});
    }
}
