#pragma once

namespace core {

/// Gives back the spare memory of a list that has grown, where that is worth copying the list.
template <typename List>
void dropSpare(List &list)
{
    if (list.capacity() - list.size() > list.capacity() / 4) {
        list.squeeze();
    }
}

} // namespace core
