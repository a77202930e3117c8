#pragma once

#include <QTest>

using namespace Qt::StringLiterals; // every test begins with this header or one that includes it

// What comes about is waited for as long as the slowest machine takes for it, not for the toolkit's five
// seconds.
#undef QTRY_VERIFY
#undef QTRY_VERIFY2
#undef QTRY_COMPARE
#define QTRY_VERIFY(expression) QTRY_VERIFY_WITH_TIMEOUT((expression), 30000)
#define QTRY_VERIFY2(expression, message) QTRY_VERIFY2_WITH_TIMEOUT((expression), message, 30000)
#define QTRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, 30000)
