// SPDX-License-Identifier: MIT
#include "host/vxparser/CPLClickInfo.h"

#include "host/vxparser/ClickInfoText.h"
#include "host/vxutils/CVXSLog.h"
#include "host/vxutils/writeWhole.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextCodec>

#include <utility>

using namespace clickinfotext;

namespace {

using Sections = std::vector<std::unique_ptr<CPLSection>>;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ClickInfo)
};

QString tooBig()
{
    return Text::tr("it is larger than %1 MB").arg(CPLClickInfo::MAX_FILE_BYTES / (1024 * 1024));
}

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

QStringView withoutBlanks(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.at(0)))
        text = text.mid(1);
    while (!text.isEmpty() && isBlank(text.at(text.size() - 1)))
        text.chop(1);
    return text;
}

/// UTF-8 to text, refusing what is not UTF-8.
bool decoded(const char *bytes, int size, QString *line)
{
    static QTextCodec *codec = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    *line = codec->toUnicode(bytes, size, &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

/// "[key]" or "[key]: name"
bool readSectionLine(QStringView line, Sections *sections, QString *reason)
{
    const int end = findUnescaped(line, QLatin1Char(']'), 1);
    if (end < 0) {
        *reason = Text::tr("the section key has no \"]\" after it");
        return false;
    }
    QString key;
    QString name; // stays null when the section has none
    if (!unescaped(withoutBlanks(line.mid(1, end - 1)), &key, reason))
        return false;
    const QStringView rest = withoutBlanks(line.mid(end + 1));
    if (!rest.isEmpty()) {
        if (rest.at(0) != QLatin1Char(':')) {
            *reason = Text::tr("only \": name\" may follow the \"]\" of a section");
            return false;
        }
        if (!unescaped(withoutBlanks(rest.mid(1)), &name, reason))
            return false;
    }
    auto section = std::make_unique<CPLSection>();
    section->setSectionKey(key);
    section->setSectionName(name);
    sections->push_back(std::move(section));
    return true;
}

/// "key = value"
bool readPairLine(QStringView line, Sections *sections, QString *reason)
{
    const int equals = findUnescaped(line, QLatin1Char('='), 0);
    if (equals < 0) {
        *reason = Text::tr("neither a section nor \"key = value\"");
        return false;
    }
    if (sections->empty()) {
        *reason = Text::tr("a pair stands before the first section");
        return false;
    }
    QString key;
    QString value;
    if (!unescaped(withoutBlanks(line.left(equals)), &key, reason) ||
        !unescaped(withoutBlanks(line.mid(equals + 1)), &value, reason))
        return false;
    sections->back()->addKeyValue(key, value);
    return true;
}

bool readLine(const char *bytes, int size, Sections *sections, QString *reason)
{
    QString text;
    if (!decoded(bytes, size, &text)) {
        *reason = Text::tr("the line is not UTF-8");
        return false;
    }
    const QStringView line = withoutBlanks(text);
    if (line.isEmpty() || line.at(0) == QLatin1Char('#'))
        return true;
    return line.at(0) == QLatin1Char('[') ? readSectionLine(line, sections, reason)
                                          : readPairLine(line, sections, reason);
}

} // namespace

CPLClickInfo::CPLClickInfo() = default;
CPLClickInfo::~CPLClickInfo() = default;

ESTATUS CPLClickInfo::fail(ESTATUS status, const QString &path, const QString &reason) const
{
    m_lastError = path + QStringLiteral(": ") + reason;
    // Whether a file that is not there matters is for the caller to say.
    if (status != ESTATUS_FILE_NOT_FOUND)
        vxLog(ELOG_FAILURE, m_lastError, QString(), int(status));
    return status;
}

ESTATUS CPLClickInfo::loadClickInfo(const QString &path, bool unused)
{
    Q_UNUSED(unused)
    m_sections.clear();
    const QFileInfo info(path);
    if (!info.exists())
        return fail(ESTATUS_FILE_NOT_FOUND, path, Text::tr("there is no such file"));
    // A folder or a pipe opens as well, and reading it would never end or tell nothing.
    if (!info.isFile())
        return fail(ESTATUS_FILE_NOT_READABLE, path, Text::tr("it is not a file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(ESTATUS_FILE_NOT_READABLE, path, file.errorString());
    if (file.size() > MAX_FILE_BYTES)
        return fail(ESTATUS_FAILURE, path, tooBig());
    const QByteArray bytes = file.read(MAX_FILE_BYTES);
    if (file.error() != QFile::NoError)
        return fail(ESTATUS_FILE_NOT_READABLE, path, file.errorString());

    QString error;
    const ESTATUS status = fromText(bytes, &error);
    return status == ESTATUS_SUCCESS ? status : fail(status, path, error);
}

ESTATUS CPLClickInfo::saveClickInfo(const QString &path) const
{
    const QByteArray bytes = toText();
    if (bytes.size() > MAX_FILE_BYTES)
        return fail(ESTATUS_FAILURE, path, tooBig());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !writeWhole(file, bytes) || !file.commit())
        return fail(ESTATUS_FILE_NOT_WRITABLE, path, file.errorString());
    return ESTATUS_SUCCESS;
}

QString CPLClickInfo::lastError() const
{
    return m_lastError;
}

ESTATUS CPLClickInfo::fromText(const QByteArray &utf8, QString *error)
{
    m_sections.clear();
    Sections sections;
    // Some editors put a byte order mark in front.
    int begin = utf8.startsWith("\xef\xbb\xbf") ? 3 : 0;
    for (int number = 1; begin < utf8.size(); ++number) {
        int end = utf8.indexOf('\n', begin);
        if (end < 0)
            end = utf8.size();
        int size = end - begin;
        if (size > 0 && utf8.at(begin + size - 1) == '\r')
            --size;
        QString reason;
        if (!readLine(utf8.constData() + begin, size, &sections, &reason)) {
            if (error)
                *error = Text::tr("line %1: %2").arg(QString::number(number), reason);
            return ESTATUS_BAD_SYNTAX;
        }
        begin = end + 1;
    }
    m_sections = std::move(sections);
    return ESTATUS_SUCCESS;
}

QByteArray CPLClickInfo::toText() const
{
    QByteArray out;
    for (const std::unique_ptr<CPLSection> &section : m_sections) {
        if (!out.isEmpty())
            out += '\n';
        out += '[' + escaped(section->getSectionKey(), SECTION_KEY).toUtf8() + ']';
        QString name;
        section->getSectionName(&name, false);
        if (!name.isNull())
            out += (QStringLiteral(": ") + escaped(name, REST)).trimmed().toUtf8();
        out += '\n';

        QStringList keys;
        QStringList values;
        section->getKeyList(&keys);
        section->getValueList(&values);
        for (int i = 0; i < keys.size(); ++i) {
            const QString value = escaped(values.at(i), REST);
            out += escaped(keys.at(i), PAIR_KEY).toUtf8() + (value.isEmpty() ? " =" : " = ") +
                   value.toUtf8() + '\n';
        }
    }
    return out;
}

void CPLClickInfo::getSectionCount(int *count) const
{
    *count = int(m_sections.size());
}

CPLSection *CPLClickInfo::sectionAt(int index) const
{
    return index >= 0 && index < int(m_sections.size()) ? m_sections[std::size_t(index)].get() : nullptr;
}

CPLSection *CPLClickInfo::operator[](const QString &sectionKey) const
{
    for (const std::unique_ptr<CPLSection> &section : m_sections) {
        if (section->getSectionKey() == sectionKey)
            return section.get();
    }
    return nullptr;
}

void CPLClickInfo::addSection(CPLSection *section)
{
    if (section)
        m_sections.emplace_back(section);
}
