#pragma once

#include <QByteArrayView>

namespace store {

/// The text order JET of two UTF-8 texts: negative, 0 or positive. Case and width do not count, nor do blanks
/// behind a text; accents count only between texts that are otherwise equal.
int compareJet(QByteArrayView left, QByteArrayView right);

} // namespace store
