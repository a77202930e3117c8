#pragma once

#include <QString>

namespace core {

/// The texts of the current language by their keys.
class TextLookup
{
public:
    virtual ~TextLookup() = default;
    /// Empty when the key is unknown.
    virtual QString Lms(const QString &key) const = 0;
};

} // namespace core
