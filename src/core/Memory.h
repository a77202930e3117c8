#pragma once

#include "core/platform.h"

#include <QtGlobal>

#include <iterator>

namespace core {

/// Makes room in a list, all over which is then written and read.
template <typename List>
void reserveLarge(List &list, qsizetype size)
{
    list.reserve(static_cast<decltype(list.size())>(size));
    platform::preferLargePages(std::data(list), static_cast<size_t>(size) * sizeof(*std::data(list)));
}

/// The same in one that has begun to grow, and will be so many times as long.
template <typename List>
void reserveTimes(List &list, double times)
{
    reserveLarge(list, static_cast<qsizetype>(static_cast<double>(list.size()) * times));
}

/// Gives back the spare memory of a list that has grown, where that is worth copying the list.
template <typename List>
void dropSpare(List &list)
{
    if (list.capacity() - list.size() > list.capacity() / 4) {
        list.squeeze();
    }
}

} // namespace core
