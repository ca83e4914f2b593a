// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"
#include "host/vxutils/ESTATUS.h"
#include "math/EmptyBecause.h"
#include "math/ResultRecord.h"
#include "math/TissueMask.h"
#include "ui_cvxsimagemathwnd.h"

#include <array>
#include <memory>
#include <optional>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

class CVXSDataset;
class CVXSMultiImageView;
class CVXSSequenceDataset;
class CVXSTextTag;
class QAction;
class QCloseEvent;
class QMenu;
class QResizeEvent;
class QShowEvent;
class ResultFolderLock;
struct downloaded_save_data;
struct SColorbar;
namespace imagemath {
struct Operand;
struct Outcome;
} // namespace imagemath
namespace resultclickinfo {
struct DisplayFacts;
} // namespace resultclickinfo
namespace resultwriter {
enum class PhotographSource;
struct Request;
} // namespace resultwriter

/// The Image Math Window: two clicks of a sequence, a formula and a constant k on the left, image A, image B
/// and the result in the view on the right.
///
///     auto *window = new CVXSImageMathWnd(parent);
///     if (window->bindToSequence("AB20240511101000_SEQ")) // a sequence that is open
///         window->show();
///     // The host's answer is read when the signal returns: connect it directly.
///     connect(window, SIGNAL(signalLoadImageMathReuslt(QString, bool, ESTATUS *, downloaded_save_data *)),
///             host, SLOT(onLoadFile(QString, bool, ESTATUS *, downloaded_save_data *)));
///
/// The members read the widgets, call the free functions of math/, display/ and result/, and show the
/// outcome; their bodies stand in a file for each subject. Everything runs on the user-interface thread, in
/// slot calls made directly.
class CVXSImageMathWnd : public QWidget, public Ui_CVXSImageMathWnd
{
    Q_OBJECT

public:
    /// Slots of the view.
    enum ViewSlot { SLOT_A = 0, SLOT_B = 1, SLOT_RESULT = 2, SLOT_COUNT = 3 };

    /// The name is not used: whoever creates the window sets the object name afterwards.
    explicit CVXSImageMathWnd(QWidget *parent = nullptr, const char *name = nullptr,
                              Qt::WindowFlags flags = Qt::WindowFlags());
    ~CVXSImageMathWnd() override;

    // --- binding ---

    /// Binds the window to an open sequence: title, lists, stored k, view, first computation. False when the
    /// sequence was never saved and the user does not want it saved, or saving it failed.
    virtual bool bindToSequence(const QString &sequenceID);
    /// Offers the photographs that the selected clicks have.
    virtual void updatePhotographChoice();
    /// Whether the dataset of that click holds an image of that type; a missing dataset holds none.
    virtual bool clickHasImage(const QString &clickNumber, tag_eimagetype type) const;

    // --- computation and view ---

    /// Computes the result of the selected clicks with the chosen formula and k, and shows it.
    virtual void calculateResultImage();
    /// Puts an image (null: none) into a slot of the view list, and reads a slot back.
    virtual void setViewImage(int slot, CILImage *image);
    virtual CILImage *viewImage(int slot) const;
    /// Puts the view's picture on the clipboard.
    virtual void copyToClipboard();

    // --- constant k and imaging angle ---

    virtual void computeKFromROI(const QString &datasetText, const QString &roiName);
    virtual ESTATUS checkImagingAngles(const QString &pathA, const QString &pathB);

    // --- result dataset; the order of these declarations is part of the interface ---

    virtual void compactExponent(QString &text);
    virtual void appendNoteEntry(QString &note, const QString &key, const QString &value);
    virtual void removeNoteEntry(QString &note, const QString &key);
    virtual void replaceNoteEntry(QString &note, const QString &key, const QString &value);
    virtual QString makeResultClickNumber(QString clickNumber);
    virtual QString clickNumberStem(const QString &name);
    virtual QString userInitials(const QString &name);
    virtual int letterSuffixValue(const QString &name);
    virtual QString letterSuffixFromValue(int n);
    virtual ESTATUS prepareResultFolder();
    virtual ESTATUS writeResultClickInfo(const QString &pathA, const QString &pathB);
    virtual ESTATUS writeAnalyzedClickInfo(const QString &analyzedPathA, const QString &analyzedPathB);

Q_SIGNALS:
    void colorRangeABChanged();
    void colorRangeResultChanged();
    /// Asks the host to load a result; the receiver writes the status before the emission returns.
    void signalLoadImageMathReuslt(QString, bool, ESTATUS *, downloaded_save_data *pDownloadData = nullptr);

public Q_SLOTS:
    virtual void onClickDisplayResultForMeasuring();
    virtual void onChangeStatusOfWithPhotoFrom(int nState);
    virtual void onChangeMathOperation(int nIndex);
    virtual void onSelectClickNumberFromList();
    virtual void onChangeValueK();
    virtual void refreshImages();
    virtual QString getSequenceID();
    void closeEvent(QCloseEvent *e) override;
    void resizeEvent(QResizeEvent *e) override;
    virtual void setHandleClose(bool bDontHandleClose);
    virtual void onChangeColorRangeAB();
    virtual void onChangeColorRangeResult();
    virtual void onChangeMinZeroStatus(bool bMinStatus);
    virtual void doSettings();
    virtual void updateImageMathWindow();
    virtual void onShowROIListPopupMenu();
    virtual void onSelectROIFromMenu(QAction *pAction);

protected Q_SLOTS:
    virtual void languageChange();

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

    // Steps of the operations above.
    QString currentClickA() const;
    QString currentClickB() const;
    bool bothAssociated(const QString &clickA, const QString &clickB) const;
    void showInvalidSelection();
    imagemath::Operand operandOf(const QString &click, const CVXSDataset *own) const;
    void showOperand(const CILImage &image);
    void showOperands(const imagemath::Outcome &prepared);
    void showResult();
    void takeNotes(const imagemath::Outcome &outcome, const QString &clickA, const QString &clickB);
    bool takesImage(int slot, CILImage *image);
    void announceColorRange(void (CVXSImageMathWnd::*signal)());
    void restoreFlatField(CVXSDataset *dataset, bool remembered);
    QString noPixelsText() const;
    void scaleListFonts();
    void addROISubmenu(const QString &clickNumber);
    QString measureInBoth(CVXSDataset &source, CVXSDataset &target, const QString &roiName);
    void setKFromROI(float k, const std::optional<imagemath::RoiOfK> &roi = {});
    bool isPhotoEnabled() const;
    bool isPhotoFromA() const;
    void retranslatePhotographChoice();
    CVXSDataset *photoDataset() const;
    resultwriter::PhotographSource photographSource() const;
    resultwriter::Request resultRequest(const QString &pathA, const QString &pathB) const;
    resultclickinfo::DisplayFacts displayFacts();
    void copyPhotograph();
    void saveUnsavedOverview();
    void loadResult();
    QString clickInfoFolder(const QString &click) const;
    bool hasPlaceOnDisk(const QString &click) const;
    QString saveTemporaryCopy(CVXSDataset &dataset, const QString &click) const;
    void showWhatIsSet();
    bool askToSaveSequence();
    void tellOriginOfK(const QString &k) const;
    void fillListsAtBinding();
    void createView();
    void placeColorbars();

    QString m_sequenceID;
    QPointer<CVXSSequenceDataset> m_pSequence;
    QPointer<CVXSDataset> m_pDatasetA; ///< of the click selected in list A; null until a valid selection
    QPointer<CVXSDataset> m_pDatasetB;

    float m_kValue = 0.0f;                     ///< the constant of every formula
    std::optional<imagemath::RoiOfK> m_roiOfK; ///< that gave m_kValue; nothing for any other k
    float m_kMinimum;                          ///< bounds of a typed k
    float m_kMaximum;
    bool m_bPastedROI = false; ///< an ROI copied into the other dataset for measuring is still there

    CVXSMultiImageView *m_pView = nullptr; ///< created at binding, child of m_pGLFrame
    std::unique_ptr<QMenu> m_pROIMenu;
    std::unique_ptr<SColorbar> m_pColorbarAB;
    std::unique_ptr<SColorbar> m_pColorbarResult;
    std::unique_ptr<CVXSTextTag> m_pResultTag; ///< the first tag of the view; carries the status text
    std::unique_ptr<CVXSTextTag> m_pTagA;
    std::unique_ptr<CVXSTextTag> m_pTagB;

    CILImage m_imageA;
    CILImage m_imageB;
    CILImage m_resultImage; ///< kept between computations
    std::array<CILImage *, SLOT_COUNT>
        m_viewImages{}; ///< what the view shows; an image is present when its slot is not null
    imagemath::TissueMaskMemo m_tissueMask;
    imagemath::ResultRecord m_resultRecord; ///< how the result image was made; empty without one
    imagemath::EmptyBecause m_emptyBecause; ///< why places of the view are empty after a computation
    CILImage m_photoImage;                  ///< copy of the photograph that goes with the last result dataset
    QString m_resultClickNumber;
    QString m_resultFolderPath;                     ///< ends in "/"
    std::unique_ptr<ResultFolderLock> m_resultLock; ///< set while the flow writes a result
    bool m_bCannotCombine = false;
    QStringList m_messages;        ///< lines of the result tag while there is no result to show
    QStringList m_notes;           ///< what stands beside the result
    QStringList m_notesLogged;     ///< of these clicks; told once
    bool m_bRefreshEnabled = true; ///< false exactly while the computation emits a colour-range signal
    bool m_bHandleClose = false;
    bool m_bMissedUpdate = false;      ///< the sequence changed while the window was hidden or minimised
    bool m_bSavedForImageMath = false; ///< the user agreed to save the sequence at binding
};
