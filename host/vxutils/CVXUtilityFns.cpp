// SPDX-License-Identifier: MIT
#include "host/vxutils/CVXUtilityFns.h"

#include "host/vxutils/CVXPreference.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSettings>

namespace {

constexpr char KEY_K[] = "ImageMath/k";
constexpr char KEY_K_ORIGIN[] = "ImageMath/kSequence";
constexpr int MAX_NAME_BYTES = 255; // of one path component, on every file system in use

// k is stored while an image is computed, and the disk must not be waited for then. Settings that live on
// are written when the application comes to rest, and at its end; whoever reads them in this process sees
// them at once.
void store(const char *key, const QString &text)
{
    static QPointer<QSettings> kept;
    static QByteArray profile;
    const QByteArray presentProfile = qgetenv("VEXA_PROFILE_DIR");
    if (!kept || profile != presentProfile) {
        delete kept;
        kept = CVXPreference::settings().release();
        kept->setParent(QCoreApplication::instance());
        profile = presentProfile;
    }
    kept->setValue(QLatin1String(key), text);
    if (!QCoreApplication::instance())
        kept->sync();
}

} // namespace

QString CVXUtilityFns::getAppName()
{
    return QStringLiteral("Vexa");
}

QString CVXUtilityFns::getkValue()
{
    return CVXPreference::settings()->value(QLatin1String(KEY_K), QStringLiteral("1.00")).toString();
}

void CVXUtilityFns::setkValue(const QString &text)
{
    store(KEY_K, text);
    store(KEY_K_ORIGIN, QString());
}

QString CVXUtilityFns::getkOrigin()
{
    return CVXPreference::settings()->value(QLatin1String(KEY_K_ORIGIN)).toString();
}

void CVXUtilityFns::setkOrigin(const QString &sequenceID)
{
    store(KEY_K_ORIGIN, sequenceID);
}

bool CVXUtilityFns::isSafeFileName(const QString &name)
{
    if (name.isEmpty() || name == QLatin1String(".") || name.contains(QLatin1String("..")))
        return false;
    if (name.at(0).isSpace() || name.at(name.size() - 1).isSpace())
        return false;
    for (int i = 0; i < name.size(); ++i) {
        const QChar c = name.at(i);
        if (c == QLatin1Char('/') || c == QLatin1Char('\\') || c == QLatin1Char(':'))
            return false;
        if (c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
            c.category() == QChar::Separator_Paragraph)
            return false;
        if (c.isHighSurrogate() && i + 1 < name.size() && name.at(i + 1).isLowSurrogate())
            ++i;
        else if (c.isSurrogate())
            return false;
    }
    return name.toUtf8().size() <= MAX_NAME_BYTES;
}
