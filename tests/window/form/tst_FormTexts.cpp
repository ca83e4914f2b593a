// SPDX-License-Identifier: MIT
#include "tests/window/form/FormFixture.h"

#include <QTranslator>
#include <QtTest>

namespace {

// Answers for the form's context alone, so that a text without translation stands out.
class MarkingTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        if (qstrcmp(context, "CVXSImageMathWnd") != 0)
            return {};
        return QStringLiteral("<") + QString::fromUtf8(sourceText) + QStringLiteral(">");
    }
    bool isEmpty() const override { return false; }
};

const QString WITH_PHOTO_HELP = QStringLiteral(
    "<b>with Photo from :</b> Checking this option allows user to select the photographic image of the two "
    "datasets used in the image math operation and use the same as the photographic image in the image math "
    "result dataset..<p>Unchecking this option will disable the photographic image selection and will "
    "display "
    "only luminescent  image as the image math result.</p><p> When both photograph and Luminescent are "
    "present, the result can be viewed as Overlay</p>");
const QString ROI_HELP = QStringLiteral(
    "<b>Compute 'K' from ROI:</b>\n<br>This option is useful for subtracting fluorescence background. Draw "
    "an "
    "ROI in the active image on an area considered as background signal. Then select that ROI from "
    "\u201CCompute \u2018k\u2019 from ROI\u201D drop-down list to calculate 'k' to use in image math.</br>");

struct Text
{
    const char *widget; ///< empty: the window itself
    const char *property;
    QString text;
};

// Every text of the form that is a property of one widget.
QVector<Text> texts()
{
    return {
        {"", "windowTitle", "Image Math"},
        {"m_pSeqTitle", "text", "<b>Sequence: ZB20031215152405_SEQ</b>"},
        {"buttonGroup15", "title", ""},
        {"m_pListALabel", "text", "<b><p align=\"center\">A</p></b>"},
        {"m_pListBLabel", "text", "<b><p align=\"center\">B</p></b>"},
        {"m_pListBoxA", "whatsThis",
         "<b>List A :</b> Lists the individual image numbers of the images that were loaded in the sequence "
         "selected for image math. Selecting an image number updates the image on the right."},
        {"m_pListBoxB", "whatsThis",
         "<b>List B :</b> Lists the individual image numbers of the images that were loaded in the sequence "
         "selected for image math. Selecting a image number updates the image on the right."},
        {"m_pColorRangeAB", "title", "Color Scale Limits for A and B"},
        {"m_pAutoABRadioBtn", "whatsThis",
         "<b>Auto :</b> Displays the selected dataset in auto colorbar scale."},
        {"m_pAutoABRadioBtn", "text", "Auto"},
        {"m_pFullABRadioBtn", "whatsThis",
         "<b>Full : </b>Displays the selected dataset in full colorbar scale."},
        {"m_pFullABRadioBtn", "text", "Full"},
        {"groupBox1", "title", "Result"},
        {"m_pColorRangeResult", "title", "Color Scale Limits"},
        {"m_pFullResultRadioBtn", "whatsThis",
         "<b>Full : </b>Displays the resultant dataset in full colorbar scale."},
        {"m_pFullResultRadioBtn", "text", "Full"},
        {"m_pAutoResultRadioBtn", "whatsThis",
         "<b>Auto :</b> Displays the resultant dataset in auto colorbar scale."},
        {"m_pAutoResultRadioBtn", "text", "Auto"},
        {"m_pMinChkBox", "whatsThis",
         "<b>Min = 0 :</b> Map the colorbar minimum scale of resultant image to 0."},
        {"m_pMinChkBox", "text", "Min = 0"},
        {"m_pResultLabel", "text", "<p align=\"right\">Result :</p>"},
        {"m_pROIListButton", "whatsThis", ROI_HELP},
        {"m_pROIListButton", "text", "Compute 'k' from ROI"},
        {"m_pkLabel", "text", "<p align=\"right\">k :</p>"},
        {"m_pWithPhotoChkBox", "whatsThis", WITH_PHOTO_HELP},
        {"m_pWithPhotoChkBox", "text", "with Photo from:"},
        {"m_pOperationCB", "whatsThis",
         "<b>Result :</b> Allows the user to choose the desired image math function. The functions available "
         "are : <b>A+B*K</b>, <b> A-B*K</b>, <b>A*B*K</b>, <b>( A/B )*K</b>."},
        {"m_pKLineEdit", "whatsThis", "<b>K :</b> A constant value the user inputs for image math function."},
        {"m_pKLineEdit", "text", "0.00"},
        {"m_pDisplayBtn", "whatsThis",
         "<b>Display Result For Measuring : </b>Click this button to display the image math result in an "
         "image "
         "window."},
        {"m_pDisplayBtn", "text", "Display Result For Measuring"},
    };
}

QStringList itemsOf(const QComboBox *box)
{
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
        items << box->itemText(i);
    return items;
}

const QStringList OPERATIONS{"A + B * k", "A - B * k", "A * B * k", "(A / B) * k", "A/B if Counts(B)>k"};

/// A row for every text that the filter lets through.
template <typename Filter>
void addRows(Filter isWanted)
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("text");
    for (const Text &one : texts()) {
        const QByteArray title =
            QByteArray(one.property) + " of " + (*one.widget ? one.widget : "the window");
        if (isWanted(one))
            QTest::newRow(title.constData())
                << QString::fromLatin1(one.widget) << QByteArray(one.property) << one.text;
    }
}

} // namespace

/// Every text of the form, letter for letter, and that it follows the language.
class tst_FormTexts : public FormFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void texts_data();
    void texts();
    void languageChangeSetsTheText_data();
    void languageChangeSetsTheText();
    void everyTextIsTranslated_data();
    void everyTextIsTranslated();
    void comboBoxTexts();
    void languageChangeKeepsTheFiveOperations();
};

void tst_FormTexts::texts_data()
{
    addRows([](const Text &) { return true; });
}

void tst_FormTexts::texts()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    QFETCH(QString, text);
    QObject *found = named(widget);
    QVERIFY(found);
    QCOMPARE(found->property(property).toString(), text);
}

void tst_FormTexts::languageChangeSetsTheText_data()
{
    texts_data();
}

void tst_FormTexts::languageChangeSetsTheText()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    QFETCH(QString, text);
    QObject *found = named(widget);
    QVERIFY(found);
    QVERIFY(found->setProperty(property, QStringLiteral("7")));
    m_window->languageChange();
    QCOMPARE(found->property(property).toString(), text);
}

void tst_FormTexts::everyTextIsTranslated_data()
{
    addRows([](const Text &one) { return !one.text.isEmpty(); }); // an empty title has nothing to translate
}

void tst_FormTexts::everyTextIsTranslated()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    QFETCH(QString, text);
    MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    m_window->languageChange();
    const QString found = named(widget)->property(property).toString();
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(found, QStringLiteral("<") + text + QStringLiteral(">"));
}

void tst_FormTexts::comboBoxTexts()
{
    QCOMPARE(itemsOf(m_window->m_pOperationCB), OPERATIONS);
    QCOMPARE(itemsOf(m_window->m_pPhotoFromCB), (QStringList{"A", "B"}));
}

void tst_FormTexts::languageChangeKeepsTheFiveOperations()
{
    for (int i = 0; i < m_window->m_pOperationCB->count(); ++i)
        m_window->m_pOperationCB->setItemText(i, QStringLiteral("other"));
    m_window->m_pOperationCB->setCurrentIndex(3);
    m_window->languageChange();
    QCOMPARE(itemsOf(m_window->m_pOperationCB), OPERATIONS);
    QCOMPARE(m_window->m_pOperationCB->currentIndex(), 3);
    MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    m_window->languageChange();
    const QStringList translated = itemsOf(m_window->m_pOperationCB);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(translated.size(), 5);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(translated.at(i), QStringLiteral("<") + OPERATIONS.at(i) + QStringLiteral(">"));
}

QTEST_MAIN(tst_FormTexts)
#include "tst_FormTexts.moc"
