#pragma once

#include <QByteArrayView>

namespace store {

/// The version of the order that indexes were built with, kept in each file (see docs/formats.md). To be
/// raised with any change of compareJet; files of an older one then rebuild their indexes when they are
/// opened.
constexpr int textOrderVersion = 1;

/// The text order JET of two UTF-8 texts: negative, 0 or positive. Case and width do not count, nor do blanks
/// behind a text (a text of blanks alone keeps them); accents count only between texts that are otherwise
/// equal. The same on every system and with every version of the toolkit.
int compareJet(QByteArrayView left, QByteArrayView right);

} // namespace store
