#pragma once

#include <QTest>

using namespace Qt::StringLiterals; // every test begins with this header or one that includes it
