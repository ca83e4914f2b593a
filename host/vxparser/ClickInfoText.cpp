// SPDX-License-Identifier: MIT
#include "host/vxparser/ClickInfoText.h"

#include <QCoreApplication>

namespace {

constexpr char16_t BACKSLASH = u'\\';

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ClickInfo)
};

/// What nobody could see, or what UTF-8 cannot carry: controls, format characters (byte order mark, direction
/// marks), line separators, blanks other than the space, lone surrogates and noncharacters.
bool needsCode(uint code)
{
    if ((code & 0xfffe) == 0xfffe || (code >= 0xfdd0 && code <= 0xfdef))
        return true;
    switch (QChar::category(code)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    case QChar::Separator_Space:
        return code != ' ';
    default:
        return false;
    }
}

QString codeOf(QChar unit)
{
    return QStringLiteral("\\u%1").arg(uint(unit.unicode()), 4, 16, QLatin1Char('0'));
}

/// The letter after the backslash for characters that have a short escape, or 0.
char shortEscape(uint code, bool atEnd, bool atStart, clickinfotext::EPlace place)
{
    switch (code) {
    case BACKSLASH:
        return '\\';
    case '\n':
        return 'n';
    case '\r':
        return 'r';
    case '\t':
        return 't';
    case ' ':
        return atStart || atEnd ? 's' : 0;
    case ']':
        return place == clickinfotext::SECTION_KEY ? ']' : 0;
    case '=':
        return place == clickinfotext::PAIR_KEY ? '=' : 0;
    case '#':
    case '[':
        return place == clickinfotext::PAIR_KEY && atStart ? char(code) : 0;
    default:
        return 0;
    }
}

/// The four hexadecimal digits at `from`, or -1.
int codeAt(QStringView text, int from)
{
    if (from + 4 > text.size())
        return -1;
    int code = 0;
    for (int i = from; i < from + 4; ++i) {
        const char16_t c = text.at(i).unicode();
        const int digit = c >= u'0' && c <= u'9'   ? c - u'0'
                          : c >= u'a' && c <= u'f' ? c - u'a' + 10
                          : c >= u'A' && c <= u'F' ? c - u'A' + 10
                                                   : -1;
        if (digit < 0)
            return -1;
        code = code * 16 + digit;
    }
    return code;
}

} // namespace

QString clickinfotext::escaped(const QString &text, EPlace place)
{
    if (text.isNull())
        return QStringLiteral("\\N");
    QString out;
    out.reserve(text.size());
    const int size = text.size();
    for (int i = 0; i < size; ++i) {
        const QChar c = text.at(i);
        const bool isPair = c.isHighSurrogate() && i + 1 < size && text.at(i + 1).isLowSurrogate();
        const uint code = isPair ? QChar::surrogateToUcs4(c, text.at(i + 1)) : c.unicode();
        if (const char letter = shortEscape(code, i == size - 1, i == 0, place)) {
            out += QChar(BACKSLASH);
            out += QLatin1Char(letter);
        } else if (needsCode(code)) {
            out += codeOf(c);
            if (isPair)
                out += codeOf(text.at(i + 1));
        } else {
            out += c;
            if (isPair)
                out += text.at(i + 1);
        }
        i += isPair;
    }
    // A null text is something else than an empty one.
    return out.isNull() ? QStringLiteral("") : out;
}

bool clickinfotext::unescaped(QStringView escapedText, QString *text, QString *reason)
{
    if (escapedText.size() == 2 && escapedText.at(0) == QChar(BACKSLASH) &&
        escapedText.at(1) == QLatin1Char('N')) {
        *text = QString();
        return true;
    }
    *text = QStringLiteral("");
    text->reserve(int(escapedText.size()));
    for (int i = 0; i < escapedText.size(); ++i) {
        const QChar c = escapedText.at(i);
        if (c != QChar(BACKSLASH)) {
            if (c.category() == QChar::Other_Control && c != QLatin1Char('\t')) {
                *reason = Text::tr("control character %1 is not written as an escape").arg(codeOf(c));
                return false;
            }
            *text += c;
            continue;
        }
        if (++i == escapedText.size()) {
            *reason = Text::tr("the line ends in the middle of an escape");
            return false;
        }
        switch (escapedText.at(i).unicode()) {
        case u'n':
            *text += QLatin1Char('\n');
            break;
        case u'r':
            *text += QLatin1Char('\r');
            break;
        case u't':
            *text += QLatin1Char('\t');
            break;
        case u's':
            *text += QLatin1Char(' ');
            break;
        case BACKSLASH:
        case u'=':
        case u'[':
        case u']':
        case u'#':
            *text += escapedText.at(i);
            break;
        case u'u': {
            const int code = codeAt(escapedText, i + 1);
            if (code < 0) {
                *reason = Text::tr("\\u is not followed by four hexadecimal digits");
                return false;
            }
            *text += QChar(ushort(code));
            i += 4;
            break;
        }
        default:
            *reason = Text::tr("there is no escape \\%1").arg(escapedText.at(i));
            return false;
        }
    }
    return true;
}

int clickinfotext::findUnescaped(QStringView line, QChar mark, int from)
{
    for (int i = from; i < line.size(); ++i) {
        if (line.at(i) == QChar(BACKSLASH))
            ++i;
        else if (line.at(i) == mark)
            return i;
    }
    return -1;
}
