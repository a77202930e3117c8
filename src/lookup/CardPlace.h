#pragma once

#include <QList>
#include <QRect>

namespace lookup {

/// What a card has to be kept from, all of it in the coordinates of the desktop.
struct CardRoom
{
    QRect screen;              ///< what is free of the screen
    QRect window = {};         ///< the one the operator works in; null where none of the program's is
    QRect field = {};          ///< into which he types; null without one
    QList<QRect> buttons = {}; ///< of that window, and what else is to be reached there
    bool mirrored = false;
};

/// Where a card of that size stands: beside the window if the screen has room there, otherwise where it
/// covers no button and as little as possible of the field and the window; without a window, in the lower
/// corner. If both sides have room, the direction of writing decides.
QRect placeCard(const QSize &card, const CardRoom &room);

/// Whether a card covers what the operator needs: a button, or the field that he types into.
bool isInTheWay(const QRect &card, const CardRoom &room);

} // namespace lookup
