// SPDX-License-Identifier: MIT
#pragma once

#include "app/datasets/RecentSequences.h"
#include "app/PluginManager.h"
#include "check/ResultCheck.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/view/windows/CVXSChildWindow.h"
#include "host/vxapi/view/windows/CVXSWorkspace.h"
#include "math/ResultRecord.h"
#include "tests/support/GuiDriver.h"
#include "tests/support/WorkspaceFixture.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

/// The workspace with a sequence open, and the user who makes results of it with the real tool.
class ResultCheckFixture
{
public:
    static constexpr char SEQUENCE[] = "AB20260102030405_SEQ";
    static constexpr char CLICK_A[] = "AB20260102030406";
    static constexpr char CLICK_B[] = "AB20260102030507";

    /// A complete click whose counts no two pixels share and whose sums need rounding.
    static ClickSpec clickOf(const char *number)
    {
        ClickSpec spec;
        spec.clickNumber = QString::fromLatin1(number);
        const bool isB = spec.clickNumber == QLatin1String(CLICK_B);
        spec.counts = [isB](int x, int y) {
            return isB ? 250.3f + 1.7f * float(x) + 0.3f * float(y * y) : 1000.1f + 3.1f * float(x * y);
        };
        return spec;
    }

    /// Saves these clicks as a sequence and opens it; false when that failed.
    bool open(const QList<ClickSpec> &clicks)
    {
        {
            TestStudy study(SEQUENCE);
            for (const ClickSpec &click : clicks) {
                if (!study.add(click))
                    return false;
            }
            if (study.sequence()->save(m_data.path()) != ESTATUS_SUCCESS)
                return false;
            folder = study.sequence()->getSequenceInfoPath();
        }
        return openAgain();
    }
    bool openAgain()
    {
        if (workspace.window->parts().plugins->menuActions().isEmpty())
            workspace.window->loadPlugins(QStringLiteral(VEXA_BINARY_DIR "/lib/vexa/plugins"));
        sequence = workspace.window->openSequence(folder);
        return sequence;
    }

    /// Opens the tool on the sequence, chooses, and clicks "Display Result For Measuring". Null when no
    /// result came of it.
    CVXSDataset *makeResult(int operation, const QString &k, tag_edisplayunit unit = EUNIT_COUNTS,
                            bool withPhotograph = false, int rowA = 0, int rowB = 1)
    {
        sequence->setActiveUnit(unit);
        workspace.window->parts().workspace->showSequence(sequence);
        GuiDriver user(workspace.window.get());
        if (!user.chooseFromMenu("menuTools", "Image Math"))
            return nullptr;
        control<QListWidget>("m_pListBoxA")->setCurrentRow(rowA);
        control<QListWidget>("m_pListBoxB")->setCurrentRow(rowB);
        if (!user.choose("m_pOperationCB", operation) || !user.type("m_pKLineEdit", k, Qt::Key_Return))
            return nullptr;
        control<QCheckBox>("m_pWithPhotoChkBox")->setChecked(withPhotograph);
        const CVXSDataset *before = activeDataset();
        user.press("m_pDisplayBtn");
        CVXSDataset *result = activeDataset();
        return result != before ? result : nullptr;
    }

    static CVXSDataset *activeDataset()
    {
        const CVXSChildWindow *window = CVXSChildWindow::getActiveChildWnd();
        return window ? window->getDataset() : nullptr;
    }

    template <typename T>
    T *control(const char *name) const
    {
        return workspace.window->parts().workspace->findChild<T *>(QString::fromLatin1(name));
    }

    /// A - B * k of the two plain clicks.
    CVXSDataset *makePlainResult(const QString &k = QStringLiteral("0.37"))
    {
        return open({clickOf(CLICK_A), clickOf(CLICK_B)}) ? makeResult(1, k) : nullptr;
    }
    ResultCheck check(const CVXSDataset *result) const
    {
        return ResultCheck::of(*result, workspace.window->parts().recentSequences->folders());
    }

    /// A file of a dataset of the sequence.
    QString fileOf(const char *click, const QString &file) const
    {
        return folder + QString::fromLatin1(click) + QLatin1Char('/') + file;
    }

    /// Reads an image file, lets it be changed, and writes it again.
    static bool rewrite(const QString &path, const std::function<void(CILImage &)> &change)
    {
        CILImage image;
        const QByteArray file = QFile::encodeName(path);
        if (image.loadTIFF(file.constData()) != EIL_SUCCESS)
            return false;
        change(image);
        return image.saveTIFF(file.constData()) == EIL_SUCCESS;
    }
    static bool setPixel(const QString &path, int index, float value)
    {
        return rewrite(path, [&](CILImage &image) {
            image.ChangeType(VXS_FLOAT);
            static_cast<float *>(image.get_data())[index] = value;
        });
    }
    static bool setDescription(const CVXSDataset *result, const QByteArray &text)
    {
        return rewrite(result->getFolderPath() + QStringLiteral("luminescent.tif"),
                       [&](CILImage &image) { image.setDescription(text.toStdString()); });
    }

    WorkspaceFixture workspace;
    CVXSSequenceDataset *sequence = nullptr;
    QString folder; ///< of the sequence, ending in "/"

private:
    QTemporaryDir m_data;
};

namespace resultcheck {

constexpr auto A = ResultCheckFixture::CLICK_A;
constexpr auto B = ResultCheckFixture::CLICK_B;

inline ClickSpec clickA()
{
    return ResultCheckFixture::clickOf(A);
}

inline ClickSpec clickB()
{
    return ResultCheckFixture::clickOf(B);
}

inline ClickSpec withFlatField(ClickSpec spec)
{
    spec.flatField = [](int x, int y) { return 0.7f + 0.01f * float(x + y); };
    return spec;
}

inline ClickSpec withPhotograph(ClickSpec spec)
{
    spec.photograph = [](int x, int y) { return x * x + y * y < 900 ? 200.0f : 10.0f; };
    return spec;
}

/// A pixel of 0 in B makes an infinity of a ratio, and a NaN where A is 0 too.
inline ClickSpec withZeros(ClickSpec spec)
{
    const auto counts = spec.counts;
    spec.counts = [counts](int x, int y) { return y == 0 && x < 2 ? 0.0f : counts(x, y); };
    return spec;
}

inline QString resultFile(const CVXSDataset *result)
{
    return result->getFolderPath() + QStringLiteral("luminescent.tif");
}

inline imagemath::ResultRecord recordOf(const CVXSDataset *result)
{
    std::string text;
    imagemath::ResultRecord record;
    QString reason;
    CILImage::loadDescription(QFile::encodeName(resultFile(result)).constData(), &text);
    if (!imagemath::fromJson(QByteArray::fromStdString(text), &record, &reason))
        qWarning("no record: %s", qPrintable(reason));
    return record;
}

inline bool anyLine(const ResultCheck &check, const QString &text)
{
    return !check.lines.filter(text).isEmpty();
}

inline QByteArray told(const ResultCheck &check)
{
    return (check.headline + QLatin1Char('\n') + check.lines.join(QLatin1Char('\n'))).toUtf8();
}

} // namespace resultcheck
