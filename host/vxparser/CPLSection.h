// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxparser/vxparser_global.h"
#include "host/vxutils/ESTATUS.h"

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/// One section of a ClickInfo record: a key by which it is found, an optional name, and key/value pairs in
/// order. A key may occur more than once; every pair keeps its place.
class VXPARSER_EXPORT CPLSection
{
public:
    CPLSection();
    ~CPLSection();

    void setSectionKey(const QString &key);
    QString getSectionKey() const;

    void setSectionName(const QString &name);
    /// The name; a null string when the section has none. The flag is not used and kept for the interface.
    void getSectionName(QString *name, bool unused) const;

    /// Number of pairs.
    int count() const;
    /// Keys and values in file order, parallel to each other: they replace what the lists held.
    void getKeyList(QStringList *keys) const;
    void getValueList(QStringList *values) const;

    /// The value of the last pair of that key. ESTATUS_KEY_NOT_FOUND leaves `value` (may be null) untouched.
    ESTATUS getValue(const QString &key, QString *value) const;
    /// Always appends a pair, also of a key that is there already.
    void addKeyValue(const QString &key, const QString &value);
    /// Changes the last pair of that key, or appends one.
    void setValue(const QString &key, int value);
    void setValue(const QString &key, const QString &value);

private:
    /// Position of the last pair of that key, or -1.
    int lastIndexOf(const QString &key) const;

    QString m_key;
    QString m_name;
    QVector<QPair<QString, QString>> m_pairs;
};
