// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/CVXSSequenceWindow.h"

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vxapi/model/clickinfo/ClickInfoValues.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxapi/view/windows/DatasetText.h"
#include "host/vxapi/view/windows/DatasetThumbnail.h"
#include "host/vxapi/view/windows/SequenceSaving.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "host/vxutils/PlainToolTip.h"

#include <algorithm>
#include <QHash>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int THUMBNAIL_SIDE = 132;
constexpr int GRID_MARGIN = 20; ///< beside the longest line of a click
constexpr int CLICK_ROLE = Qt::UserRole;

QList<CVXSSequenceWindow *> &sequenceWindows()
{
    static QList<CVXSSequenceWindow *> windows;
    return windows;
}

/// A line with the names of the files that a dataset was imported from; empty when it was not imported.
QString importText(CVXSDataset *dataset)
{
    QStringList files;
    for (const QLatin1String section : {clickinfo::SECTION_LUMINESCENT, clickinfo::SECTION_PHOTOGRAPH}) {
        if (dataset)
            files.append(clickinfo::sourceFileOf(*dataset->getClickInfo(), section));
    }
    files.removeAll(QString());
    return files.isEmpty()
               ? QString()
               : QLatin1Char('\n') + CVXSSequenceWindow::tr("From %1").arg(files.join(QStringLiteral(", ")));
}

} // namespace

class CVXSSequenceWindow::Private
{
public:
    struct Thumbnail
    {
        QPointer<CVXSDataset> dataset;
        QIcon icon;
    };

    Private(CVXSSequenceWindow *window, CVXSSequenceDataset *shown) : q(window), sequence(shown) {}

    void build();
    void updateTitle();
    void followLoading();
    QSize cellSize() const;
    void rebuild();
    void makeNextThumbnail();
    QListWidgetItem *addItem(const QString &clickNumber);
    void describe(QListWidgetItem *item) const;

    CVXSSequenceWindow *q;
    QPointer<CVXSSequenceDataset> sequence;
    QLabel *title = nullptr;
    QListWidget *list = nullptr;
    QTimer thumbnailTimer;
    QStringList clickNumbers;
    int loadedCount = 0; ///< datasets that came, or turned out not to be there, while it was being opened
    QHash<QString, Thumbnail> thumbnails;
};

void CVXSSequenceWindow::Private::build()
{
    title = new QLabel(q);
    title->setObjectName(QStringLiteral("SequenceTitle"));
    title->setTextFormat(Qt::PlainText);
    title->setTextInteractionFlags(Qt::TextSelectableByMouse);
    list = new QListWidget(q);
    list->setObjectName(QStringLiteral("SequenceThumbnails"));
    list->setViewMode(QListView::IconMode);
    list->setResizeMode(QListView::Adjust);
    list->setMovement(QListView::Static);
    list->setWordWrap(true);
    list->setIconSize(QSize(THUMBNAIL_SIDE, THUMBNAIL_SIDE));
    list->setUniformItemSizes(true);
    auto *layout = new QVBoxLayout(q);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(title);
    layout->addWidget(list, 1);
    q->setFocusProxy(list);

    connect(list, &QListWidget::itemActivated, q, [this](QListWidgetItem *item) {
        if (sequence && sequence->getDataset(item->data(CLICK_ROLE).toString()))
            Q_EMIT q->datasetActivated(item->data(CLICK_ROLE).toString());
    });
    // One thumbnail a turn of the event loop: a long sequence is usable while its pixels are being read.
    connect(&thumbnailTimer, &QTimer::timeout, q, [this] { makeNextThumbnail(); });
}

void CVXSSequenceWindow::Private::updateTitle()
{
    const int count = clickNumbers.size();
    const QString saved =
        sequence && sequence->getSequenceInfoPath().isEmpty() ? tr(", not saved yet") : QString();
    const QString id = sequence ? sequence->getSequenceID() : QString();
    const QString clicks = count == 1 ? tr("1 click") : tr("%1 clicks").arg(count);
    title->setText(sequence && sequence->isLoading()
                       ? tr("Sequence %1: loading, %2 of %3").arg(id, QString::number(loadedCount), clicks)
                       : tr("Sequence %1: %2%3").arg(id, clicks, saved));
    q->setWindowTitle(id);
}

QListWidgetItem *CVXSSequenceWindow::Private::addItem(const QString &clickNumber)
{
    auto *item = new QListWidgetItem(list);
    item->setSizeHint(list->gridSize() - QSize(4, 4)); // else lines are broken at the picture's width
    item->setData(CLICK_ROLE, clickNumber);
    QPixmap empty(THUMBNAIL_SIDE, THUMBNAIL_SIDE);
    empty.fill(QColor(0x20, 0x22, 0x26));
    item->setIcon(QIcon(empty));
    describe(item);
    return item;
}

void CVXSSequenceWindow::Private::describe(QListWidgetItem *item) const
{
    const QString clickNumber = item->data(CLICK_ROLE).toString();
    CVXSDataset *dataset = sequence->getDataset(clickNumber);
    const QString missing = sequence->isLoading() ? tr("is being loaded") : tr("cannot be opened");
    const QString text = clickNumber + QLatin1Char('\n') + (dataset ? datasetKindText(*dataset) : missing);
    const QString source = dataset ? sourceFileText(*dataset) : QString();
    const int room = list->gridSize().width() - GRID_MARGIN;
    const QString shown =
        source.isEmpty() ? QString()
                         : QLatin1Char('\n') + list->fontMetrics().elidedText(source, Qt::ElideMiddle, room);
    item->setText(text + shown);
    item->setToolTip(plainToolTip(text + importText(dataset)));
    item->setForeground(
        list->palette().brush(dataset ? QPalette::Active : QPalette::Disabled, QPalette::Text));
}

// Item by item: building all of them anew for each would make a long sequence slow to open.
void CVXSSequenceWindow::Private::followLoading()
{
    connect(sequence, &CVXSSequenceDataset::datasetLoaded, q, [this](const QString &clickNumber) {
        const int row = clickNumbers.indexOf(clickNumber);
        if (row < 0 || row >= list->count())
            return;
        ++loadedCount;
        describe(list->item(row));
        updateTitle();
        thumbnailTimer.start(0);
    });
    connect(sequence, &CVXSSequenceDataset::loaded, q, [this] { rebuild(); });
}

// Wide enough for the longest click number (cut off, they would all read the same), and for the names of files
// as far as there is room.
QSize CVXSSequenceWindow::Private::cellSize() const
{
    const QFontMetrics metrics = list->fontMetrics();
    int width = THUMBNAIL_SIDE + 28;
    int lines = 2;
    for (const QString &clickNumber : qAsConst(clickNumbers)) {
        const CVXSDataset *dataset = sequence->getDataset(clickNumber);
        const QString source = dataset ? sourceFileText(*dataset) : QString();
        lines = source.isEmpty() ? lines : 3;
        for (const QString &line : {clickNumber, source})
            width = std::max(width, metrics.size(Qt::TextSingleLine, line).width() + GRID_MARGIN);
    }
    return {std::min(width, 2 * THUMBNAIL_SIDE), THUMBNAIL_SIDE + lines * metrics.lineSpacing() + 18};
}

void CVXSSequenceWindow::Private::rebuild()
{
    const QListWidgetItem *current = list->currentItem();
    const QString selected = current ? current->data(CLICK_ROLE).toString() : QString();
    list->clear();
    clickNumbers = sequence ? sequence->getClickNumbers() : QStringList();
    list->setGridSize(cellSize());
    QHash<QString, Thumbnail> kept;
    for (const QString &clickNumber : qAsConst(clickNumbers)) {
        QListWidgetItem *item = addItem(clickNumber);
        if (clickNumber == selected)
            list->setCurrentItem(item);
        CVXSDataset *dataset = sequence->getDataset(clickNumber);
        const Thumbnail before = thumbnails.value(clickNumber);
        if (dataset && before.dataset == dataset) {
            item->setIcon(before.icon);
            kept.insert(clickNumber, before);
        }
    }
    thumbnails = kept;
    updateTitle();
    thumbnailTimer.start(0);
}

void CVXSSequenceWindow::Private::makeNextThumbnail()
{
    for (int row = 0; sequence && row < list->count(); ++row) {
        QListWidgetItem *item = list->item(row);
        const QString clickNumber = item->data(CLICK_ROLE).toString();
        CVXSDataset *dataset = sequence->getDataset(clickNumber);
        if (!dataset || thumbnails.contains(clickNumber))
            continue;
        const double ratio = q->devicePixelRatioF();
        QImage image = datasetThumbnail(*dataset, int(THUMBNAIL_SIDE * ratio));
        image.setDevicePixelRatio(ratio);
        const QIcon icon(QPixmap::fromImage(image));
        thumbnails.insert(clickNumber, {dataset, icon});
        item->setIcon(icon);
        // A change of colours or corrections makes the picture anew when there is time.
        const auto again = [this, clickNumber] {
            thumbnails.remove(clickNumber);
            thumbnailTimer.start(0);
        };
        disconnect(dataset, &CVXSDataset::displayChanged, q, nullptr);
        connect(dataset, &CVXSDataset::displayChanged, q, again);
        return;
    }
    thumbnailTimer.stop();
}

CVXSSequenceWindow::CVXSSequenceWindow(CVXSSequenceDataset *sequence, QWidget *parent)
    : CVXSChildWindow(parent), d(std::make_unique<Private>(this, sequence))
{
    sequenceWindows().append(this);
    setWindowIcon(CVXUtilityFns::appIcon());
    d->build();
    d->rebuild();
    resize(580, 440);
    if (!sequence)
        return;
    connect(sequence, &CVXSSequenceDataset::updateOnChangeSequence, this, [this] { d->rebuild(); });
    connect(sequence, &CVXSSequenceDataset::saved, this, [this] { d->updateTitle(); });
    d->followLoading();
    connect(sequence, &QObject::destroyed, this, [this] {
        QWidget *window = subWindow() ? static_cast<QWidget *>(subWindow()) : this;
        window->deleteLater();
    });
}

CVXSSequenceWindow::~CVXSSequenceWindow()
{
    sequenceWindows().removeAll(this);
}

CVXSSequenceWindow *CVXSSequenceWindow::getSequenceWindow(const CVXSSequenceDataset *sequence)
{
    for (CVXSSequenceWindow *window : qAsConst(sequenceWindows())) {
        if (sequence && window->getSequenceDataset() == sequence)
            return window;
    }
    return nullptr;
}

bool CVXSSequenceWindow::is3DSceneOnlySequence() const
{
    return d->sequence && d->sequence->is3DSceneOnly();
}

CVXSSequenceDataset *CVXSSequenceWindow::getSequenceDataset() const
{
    return d->sequence;
}

ESTATUS CVXSSequenceWindow::saveSequence()
{
    return saveSequenceWithMessage(this, d->sequence);
}

void CVXSSequenceWindow::refreshAfterDatasetAdded()
{
    d->rebuild();
    Q_EMIT signalUpdateMeasurmentsCombobox(QString());
}
