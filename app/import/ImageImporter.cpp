// SPDX-License-Identifier: MIT
#include "app/import/ImageImporter.h"

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxutils/CVXPreference.h"
#include "host/vxutils/CVXSLog.h"

#include <algorithm>
#include <cmath>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImageImporter)
};

bool areInitials(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar letter) {
        return (letter >= QLatin1Char('A') && letter <= QLatin1Char('Z')) ||
               (letter >= QLatin1Char('a') && letter <= QLatin1Char('z'));
    });
}

QString sequencesFolder()
{
    return CVXPreference::getProgramDataPath() + QStringLiteral("/sequences/");
}

/// Click numbers in the sequences that are saved where sequences usually are. They need not be open to be
/// confused with others later.
QSet<QString> savedClickNumbers()
{
    QSet<QString> names;
    const QDir sequences(sequencesFolder());
    const QStringList ids = sequences.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &id : ids) {
        const QStringList clicks = QDir(sequences.filePath(id)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &click : clicks)
            names.insert(click);
    }
    return names;
}

/// Names of initials and a stamp that nobody has, one after another.
class FreeNames
{
public:
    FreeNames(const QString &initials, const QDateTime &from)
        : m_initials(initials), m_time(from.date(), from.time(), Qt::UTC)
    {
    }

    QString nextClickNumber()
    {
        QString name = nextName();
        while (m_saved.contains(name) || CVXSDataset::getDataset(name))
            name = nextName();
        return name;
    }

    static bool isSequenceTaken(const QString &id)
    {
        return CVXSSequenceDataset::getSequenceDataset(id) || QFileInfo::exists(sequencesFolder() + id);
    }

private:
    QString nextName()
    {
        const QString name = m_initials + m_time.toString(QStringLiteral("yyyyMMddhhmmss"));
        m_time = m_time.addSecs(1);
        return name;
    }

    QString m_initials;
    QSet<QString> m_saved = savedClickNumbers();
    QDateTime m_time; // counted as if it were UTC, which has no hour twice
};

/// What is said of one image goes before what is said of all.
ImportSettings settingsOf(const ImportRequest &request, const ImportImage &image)
{
    ImportSettings settings = request.settings;
    if (!std::isnan(image.exposure))
        settings.exposure = image.exposure;
    if (!std::isnan(image.offset))
        settings.offset = image.offset;
    else if (!image.files.dark.isEmpty())
        settings.offset = NOT_KNOWN;
    return settings;
}

/// The constants are the same for all images, but for the exposure: said once.
void tellMissingConstants(const CVXSSequenceDataset &sequence)
{
    const QList<CVXSDataset *> datasets = sequence.getDatasets();
    QStringList counted;
    QString why;
    for (const CVXSDataset *dataset : datasets) {
        const QString obstacle = dataset->obstacleToUnit(EUNIT_RADIANCE);
        if (obstacle.isEmpty())
            continue;
        counted += dataset->getClickNumber();
        if (obstacle.size() > why.size())
            why = obstacle;
    }
    if (counted.isEmpty())
        return;
    vxLog(ELOG_WARNING, counted.size() == datasets.size()
                            ? Text::tr("%1 is in counts only: %2").arg(sequence.getSequenceID(), why)
                            : Text::tr("%1: in counts only: %2: %3")
                                  .arg(sequence.getSequenceID(), counted.join(QStringLiteral(", ")), why));
}

QString sequenceIdOf(const QString &clickNumber)
{
    return clickNumber + QStringLiteral("_SEQ");
}

} // namespace

std::unique_ptr<CVXSSequenceDataset> importSequence(const ImportRequest &request, const QDateTime &now,
                                                    ESTATUS *status, QString *error)
{
    const auto failed = [status, error](ESTATUS code, const QString &reason) {
        *status = code;
        *error = reason;
        return nullptr;
    };
    if (request.images.isEmpty())
        return failed(ESTATUS_NO_IMAGE, Text::tr("Luminescent images: none was added"));
    if (!areInitials(request.initials))
        return failed(ESTATUS_BAD_VALUE,
                      Text::tr("User initials: letters from A to Z are needed, such as ZB, "
                               "because every dataset is named by them"));
    FreeNames names(request.initials, now);
    std::unique_ptr<CVXSSequenceDataset> sequence;
    for (const ImportImage &image : request.images) {
        QString clickNumber = names.nextClickNumber();
        while (!sequence && FreeNames::isSequenceTaken(sequenceIdOf(clickNumber)))
            clickNumber = names.nextClickNumber();
        std::unique_ptr<CVXSDataset> dataset =
            importImages(clickNumber, image.files, settingsOf(request, image), status, error);
        if (!dataset)
            return nullptr;
        if (!sequence)
            sequence = std::make_unique<CVXSSequenceDataset>(sequenceIdOf(clickNumber));
        if (!sequence->addDataset(dataset.get()))
            return failed(ESTATUS_FAILURE, sequence->lastError());
        dataset.release(); // it is the sequence's
    }
    tellMissingConstants(*sequence);
    *status = ESTATUS_SUCCESS;
    return sequence;
}
