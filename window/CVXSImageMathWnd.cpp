// SPDX-License-Identifier: MIT
#include "window/CVXSImageMathWnd.h"

#include "display/KText.h"
#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "host/vxapi/view/canvas/CVXSMultiImageView.h"
#include "host/vxapi/view/canvas/CVXSTextTag.h"
#include "host/vxapi/view/windows/CVXSMdiSubWindow.h"
#include "host/vxutils/CVXUtilityFns.h"
#include "result/ResultFolderLock.h"
#include "window/DecimalCommaKey.h"
#include "window/UnfinishedNumber.h"

#include <algorithm>
#include <QCloseEvent>
#include <QDoubleValidator>
#include <QFontInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QMenu>

namespace {

constexpr double LIST_POINTS = 8.0; ///< of the lists' font, where the application's has its default size

/// The default size of the application's font [points]: what a desktop has of itself, or what Qt takes where
/// there is none.
double defaultPoints()
{
    const QString platform = QGuiApplication::platformName();
    const bool hasDesktop = platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
    return hasDesktop ? 9.0 : 12.0;
}

} // namespace

CVXSImageMathWnd::CVXSImageMathWnd(QWidget *parent, const char *, Qt::WindowFlags flags)
    : QWidget(parent, flags), m_kMinimum(ktext::MINIMUM), m_kMaximum(ktext::MAXIMUM)
{
    setupUi(this);
    m_pFullABRadioBtn->setChecked(true);
    m_pFullResultRadioBtn->setChecked(true);
    m_pMinChkBox->setChecked(false);

    m_pResultTag = std::make_unique<CVXSTextTag>();
    m_pTagA = std::make_unique<CVXSTextTag>();
    m_pTagB = std::make_unique<CVXSTextTag>();
    m_pColorbarAB = std::make_unique<SColorbar>();
    m_pColorbarResult = std::make_unique<SColorbar>();

    m_pROIMenu = std::make_unique<QMenu>();
    m_pROIListButton->setMenu(m_pROIMenu.get());
    connect(m_pROIMenu.get(), SIGNAL(aboutToShow()), this, SLOT(onShowROIListPopupMenu()));

    // The wide range is the one in force: a k beyond its bounds may be typed, and is then clamped.
    auto *validator = new QDoubleValidator(m_pKLineEdit);
    QLocale c = QLocale::c();
    c.setNumberOptions(c.numberOptions() |
                       QLocale::RejectGroupSeparator); // "1,000" would be read as no number
    validator->setLocale(c);
    validator->setTop(double(m_kMaximum));
    validator->setBottom(double(m_kMinimum));
    validator->setRange(-1e37, 1e37, 15);
    m_pKLineEdit->setValidator(validator);
    new DecimalCommaKey(m_pKLineEdit);
    scaleListFonts();
    new UnfinishedNumber(m_pKLineEdit, [this] { return ktext::exact(m_kValue); });

    setWindowIcon(CVXUtilityFns::appIcon());
}

CVXSImageMathWnd::~CVXSImageMathWnd() = default;

QString CVXSImageMathWnd::getSequenceID()
{
    return m_sequenceID;
}

void CVXSImageMathWnd::setHandleClose(bool bDontHandleClose)
{
    m_bHandleClose = bDontHandleClose;
}

// The user never closes the window, only hides it.
void CVXSImageMathWnd::closeEvent(QCloseEvent *e)
{
    if (auto *subWindow = qobject_cast<CVXSMdiSubWindow *>(parentWidget()))
        subWindow->hideWindow();
    e->ignore();
}

// What the sequence told a hidden or minimised window is made up for, so that it never shows (or saves) an
// image of another unit than it says.
void CVXSImageMathWnd::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_bMissedUpdate)
        updateImageMathWindow();
}

void CVXSImageMathWnd::resizeEvent(QResizeEvent *e)
{
    QWidget::resizeEvent(e);
}

void CVXSImageMathWnd::refreshImages()
{
    if (m_pView && parentWidget() && parentWidget()->isVisible())
        m_pView->update();
}

void CVXSImageMathWnd::showWhatIsSet()
{
    doSettings();
    refreshImages();
}

void CVXSImageMathWnd::onChangeStatusOfWithPhotoFrom(int nState)
{
    m_pPhotoFromCB->setEnabled(nState != 0);
}

void CVXSImageMathWnd::onChangeMathOperation(int)
{
    calculateResultImage();
}

void CVXSImageMathWnd::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        languageChange();
    else if (event->type() == QEvent::FontChange)
        scaleListFonts();
}

// Who needs a larger font needs it in the lists too. They never get smaller than they are designed.
void CVXSImageMathWnd::scaleListFonts()
{
    const double points = font().pointSizeF() > 0.0 ? font().pointSizeF() : QFontInfo(font()).pointSizeF();
    QFont scaled; // its size alone counts; the rest comes from the window
    scaled.setPointSizeF(LIST_POINTS * std::max(1.0, points / defaultPoints()));
    m_pListBoxA->setFont(scaled);
    m_pListBoxB->setFont(scaled);
}

// Titles and k of a bound window are not texts of the form any more: they are put back. Which photographs are
// offered is the window's, what they are called is not.
void CVXSImageMathWnd::languageChange()
{
    const bool bound = !m_sequenceID.isEmpty();
    const QString windowTitle = this->windowTitle();
    const QString title = m_pSeqTitle->text();
    const QString k = m_pKLineEdit->text();
    retranslateUi(this);
    if (bound) {
        setWindowTitle(windowTitle);
        m_pSeqTitle->setText(title);
        m_pKLineEdit->setText(k);
        retranslatePhotographChoice();
    }
}
