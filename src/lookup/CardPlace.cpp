#include "lookup/CardPlace.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace lookup {

namespace {

constexpr int gap = 16; // to the edges of the screen, and of what stands beside the card

qint64 area(const QRect &rect)
{
    return rect.isValid() ? qint64(rect.width()) * rect.height() : 0;
}

// The places worth trying along one axis: the preferred one, and those where the card touches an edge of the
// screen or of something on it.
QList<int> places(int first, int last, const QList<std::pair<int, int>> &edges, int extent, int preferred)
{
    const int end = std::max(last - extent, first);
    QList<int> found = {std::clamp(preferred, first, end), first, end};
    for (const auto &[begin, behind] : edges) {
        for (const int place : {begin - gap - extent, behind + gap}) {
            if (place >= first && place <= end) {
                found.append(place);
            }
        }
    }
    return found;
}

// What a card covers at a place, and how far it is from where the eye looks for it.
using Cost = std::tuple<qint64, qint64, qint64, int>;

Cost costOf(const QRect &card, const CardRoom &room, const QPoint &corner)
{
    const qint64 buttons =
        std::accumulate(room.buttons.begin(), room.buttons.end(), qint64(0),
                        [&](qint64 sum, const QRect &button) { return sum + area(card & button); });
    return {buttons, area(card & room.field), area(card & room.window),
            (card.topLeft() - corner).manhattanLength()};
}

// Where a card is looked for first: beside the window and level with its foot; without one in the corner.
QPoint preferredCorner(const QSize &card, const CardRoom &room, const QRect &free)
{
    const QRect inner =
        room.window.isValid() ? room.window : free - QMargins(card.width(), 0, card.width(), 0);
    const int aside = room.window.isValid() ? gap : 0;
    const int left = room.mirrored ? inner.left() - aside - card.width() : inner.right() + 1 + aside;
    return {left, inner.bottom() + 1 - card.height()};
}

} // namespace

QRect placeCard(const QSize &card, const CardRoom &room)
{
    const QRect free = room.screen - QMargins(gap, gap, gap, gap);
    QList<std::pair<int, int>> across;
    QList<std::pair<int, int>> down;
    for (const QRect &rect : room.buttons + QList<QRect>{room.window, room.field}) {
        if (rect.isValid()) {
            across.append({rect.left(), rect.right() + 1});
            down.append({rect.top(), rect.bottom() + 1});
        }
    }
    const QPoint corner = preferredCorner(card, room, free);
    QRect best;
    Cost least;
    for (const int left : places(free.left(), free.right() + 1, across, card.width(), corner.x())) {
        for (const int top : places(free.top(), free.bottom() + 1, down, card.height(), corner.y())) {
            const QRect place(QPoint(left, top), card);
            if (const Cost cost = costOf(place, room, corner); best.isNull() || cost < least) {
                best = place;
                least = cost;
            }
        }
    }
    return best;
}

bool isInTheWay(const QRect &card, const CardRoom &room)
{
    return card.intersects(room.field) ||
           std::ranges::any_of(room.buttons, [&](const QRect &button) { return card.intersects(button); });
}

} // namespace lookup
