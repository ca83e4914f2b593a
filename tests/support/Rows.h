// SPDX-License-Identifier: MIT
#pragma once

#include <QTest>

/// A row of test data, its values one after the other: what QTest::newRow() << a << b says, on one line.
///
///     QTest::addColumn<QString>("text");
///     QTest::addColumn<QString>("compact");
///     row("minus stays, leading zero goes", "5.00e-01", "5.00e-1");
template <typename... Values>
void row(const char *name, Values... values)
{
    QTestData &data = QTest::newRow(name);
    (data << ... << values);
}
