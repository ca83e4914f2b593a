// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/clickinfo/ClickInfoKeys.h"
#include "host/vximage/CILImage.h"

#include <functional>
#include <QMap>
#include <QString>
#include <QTemporaryDir>

class CVXSDataset;
class CVXSSequenceDataset;

/// What a click of a test's sequence is like. The defaults are a complete luminescence acquisition.
struct ClickSpec
{
    QString clickNumber;
    QString kind = clickinfo::KIND_LUMINESCENT;
    int width = 32;
    int height = 32;
    float binning = 4.0f;
    double fieldOfView = 12.5; ///< [cm]
    /// Counts of the luminescent image; without it the click has none.
    std::function<float(int x, int y)> counts = [](int x, int y) { return float(100 + x + 2 * y); };
    /// The photograph, photographWidth x photographHeight; without it the click has none.
    std::function<float(int x, int y)> photograph;
    int photographWidth = 64;
    int photographHeight = 64;
    /// Flat field on the luminescent grid; without it the click has none.
    std::function<float(int x, int y)> flatField;
    /// Further pairs of the sections "luminescent image" and "Camera System Info"; a null value takes the key
    /// away.
    QMap<QString, QString> luminescentKeys;
    QMap<QString, QString> cameraKeys;

    /// The defaults, of that click number.
    static ClickSpec of(const QString &number)
    {
        ClickSpec spec;
        spec.clickNumber = number;
        return spec;
    }
};

/// A sequence of real host objects for a test, gone with the object.
class TestStudy
{
public:
    explicit TestStudy(const QString &id = QStringLiteral("AB20260102030405_SEQ"));
    ~TestStudy();

    /// Adds a click; on a saved study call save() again to have it on disk.
    CVXSDataset *add(const ClickSpec &spec);
    /// Saves the sequence under a temporary folder. False when that failed.
    bool save();
    CVXSSequenceDataset *sequence() const { return m_sequence; }
    QString folder() const { return m_folder.path(); }
    /// Deletes the sequence now.
    void close();

    /// A 32-bit float image of that function.
    static CILImage image(int width, int height, const std::function<float(int, int)> &pixels);

private:
    QTemporaryDir m_folder;
    CVXSSequenceDataset *m_sequence = nullptr;
};
