// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLSection.h"

CPLSection::CPLSection() = default;
CPLSection::~CPLSection() = default;

void CPLSection::setSectionKey(const QString &key)
{
    m_key = key;
}

QString CPLSection::getSectionKey() const
{
    return m_key;
}

void CPLSection::setSectionName(const QString &name)
{
    m_name = name;
}

void CPLSection::getSectionName(QString *name, bool unused) const
{
    Q_UNUSED(unused)
    if (name)
        *name = m_name;
}

int CPLSection::count() const
{
    return m_pairs.size();
}

void CPLSection::getKeyList(QStringList *keys) const
{
    keys->clear();
    keys->reserve(m_pairs.size());
    for (const QPair<QString, QString> &pair : m_pairs)
        keys->append(pair.first);
}

void CPLSection::getValueList(QStringList *values) const
{
    values->clear();
    values->reserve(m_pairs.size());
    for (const QPair<QString, QString> &pair : m_pairs)
        values->append(pair.second);
}

int CPLSection::lastIndexOf(const QString &key) const
{
    for (int i = m_pairs.size() - 1; i >= 0; --i) {
        if (m_pairs.at(i).first == key)
            return i;
    }
    return -1;
}

ESTATUS CPLSection::getValue(const QString &key, QString *value) const
{
    const int index = lastIndexOf(key);
    if (index < 0)
        return ESTATUS_KEY_NOT_FOUND;
    if (value)
        *value = m_pairs.at(index).second;
    return ESTATUS_SUCCESS;
}

void CPLSection::addKeyValue(const QString &key, const QString &value)
{
    m_pairs.append(qMakePair(key, value));
}

void CPLSection::setValue(const QString &key, int value)
{
    setValue(key, QString::number(value));
}

void CPLSection::setValue(const QString &key, const QString &value)
{
    const int index = lastIndexOf(key);
    if (index < 0)
        addKeyValue(key, value);
    else
        m_pairs[index].second = value;
}
