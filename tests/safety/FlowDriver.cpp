// SPDX-License-Identifier: MIT
// safety-flow look SEQUENCE_FOLDER
//   starts the workspace, opens the sequence, and tells what the host knows: every click, every stored
//   dataset, the hash of every file of theirs. Everything that is known must be complete and load, and what
//   is not complete must not be answered for.
// safety-flow result SEQUENCE_FOLDER CLICK_A CLICK_B [--photograph A|B]
//   opens Image Math through the menu, selects the clicks, presses "Display Result For Measuring" and tells
//   the result. Clicks that the sequence has in memory only are added when they are asked for.
// It works in the profile that VEXA_PROFILE_DIR names. Ends with 0, or 1 and a line that says "WRONG".
#include "app/ApplicationSetup.h"
#include "app/datasets/DatasetLoader.h"
#include "app/MainWindow.h"
#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/model/StoredDatasets.h"
#include "host/vxutils/CVXPreference.h"
#include "tests/safety/SafetyStudy.h"
#include "tests/safety/ShownTool.h"
#include "tests/support/LogCatcher.h"

#include <QApplication>
#include <QDir>

#include <cstdio>

namespace {

const LogCatcher *heard = nullptr; ///< from the start of the program

void say(const QString &line)
{
    std::puts(line.toUtf8().constData());
}

int wrong(const QString &what)
{
    say(QStringLiteral("WRONG ") + what);
    for (const LogEntry &entry : heard->entries()) {
        if (entry.level >= ELOG_WARNING)
            say(QStringLiteral("log ") + entry.message + QLatin1Char(' ') + entry.detail);
    }
    return 1;
}

void sayFiles(const QString &folder)
{
    const QMap<QString, QByteArray> files = hashesBelow(folder);
    for (auto it = files.begin(); it != files.end(); ++it)
        say(QStringLiteral("file %1 %2").arg(QString::fromLatin1(it.value()), folder + it.key()));
}

/// Tells a dataset and its total; false when it is not whole.
bool sayDataset(const QString &kind, const CVXSDataset *dataset)
{
    QString reason;
    if (dataset->checkComplete(&reason) != ESTATUS_SUCCESS) {
        wrong(dataset->getClickNumber() + QStringLiteral(" is known and not complete: ") + reason);
        return false;
    }
    const CILImage *image = dataset->getCoreImage(EIMAGE_LUMINESCENT);
    say(QStringLiteral("%1 %2 %3 %4")
            .arg(kind, dataset->getClickNumber(), dataset->getFolderPath(),
                 QString::number(image ? totalOf(*image) : 0.0, 'g', 17)));
    return true;
}

int look(ShownTool &tool)
{
    for (const CVXSDataset *dataset : tool.sequence()->getDatasets()) {
        if (!sayDataset(QStringLiteral("click"), dataset))
            return 1;
        sayFiles(dataset->getFolderPath());
    }
    if (tool.sequence()->getDatasets().size() != tool.sequence()->getClickNumbers().size())
        return wrong(QStringLiteral("the sequence has lost a click"));

    QStringList listed;
    for (const StoredDataset &known : StoredDatasets::instance().list()) {
        listed += QDir(known.folder).dirName();
        const QString file = known.folder + clickinfo::FILE_CLICK_INFO;
        if (tool.window().parts().datasetLoader->load(file) != ESTATUS_SUCCESS)
            return wrong(known.clickNumber + QStringLiteral(" is known and does not load"));
        const CVXSDataset *dataset = CVXSDataset::getDataset(known.clickNumber);
        if (!dataset)
            return wrong(known.clickNumber + QStringLiteral(" is known and not answered for"));
        if (!sayDataset(QStringLiteral("known"), dataset))
            return 1;
        sayFiles(known.folder);
    }
    const QDir data(CVXPreference::getProgramDataPath());
    for (const QString &name : data.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot)) {
        if (listed.contains(name))
            continue;
        if (CVXSDataset::getDataset(name))
            return wrong(name + QStringLiteral(" is not complete and answered for"));
        say(QStringLiteral("leftover ") + name);
    }
    return 0;
}

int makeResult(ShownTool &tool, const QStringList &arguments)
{
    const QString clickA = arguments.at(3);
    const QString clickB = arguments.at(4);
    const bool isWithPhotograph = arguments.size() == 7 && arguments.at(5) == QLatin1String("--photograph");
    for (const QString &click : {clickA, clickB}) {
        const bool isInMemory = click == safetystudy::MEMORY_A || click == safetystudy::MEMORY_B;
        if (isInMemory && !safetystudy::addInMemory(tool.sequence(), click))
            return wrong(click + QStringLiteral(" could not be added"));
    }
    if (!tool.openImageMath() || !tool.select(clickA, clickB) ||
        !tool.choosePhotograph(isWithPhotograph ? arguments.at(6) : QString()) || !tool.pressDisplayResult())
        return wrong(tool.why());
    return sayDataset(QStringLiteral("result"), tool.result()) ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    ApplicationSetup::beforeApplication();
    QApplication application(argc, argv);
    const LogCatcher log;
    heard = &log;
    ApplicationSetup::afterApplication();
    const QStringList arguments = QApplication::arguments();
    const bool isLook = arguments.size() == 3 && arguments.at(1) == QLatin1String("look");
    const bool isResult =
        (arguments.size() == 5 || arguments.size() == 7) && arguments.at(1) == QLatin1String("result");
    if (!isLook && !isResult) {
        std::fputs("usage: safety-flow look SEQUENCE | result SEQUENCE A B [--photograph A|B]\n", stderr);
        return 2;
    }
    ShownTool tool;
    if (!tool.openSequence(arguments.at(2)))
        return wrong(tool.why());
    return isLook ? look(tool) : makeResult(tool, arguments);
}
