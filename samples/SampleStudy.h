// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/CILImage.h"
#include "host/vxutils/ESTATUS.h"

#include <cstdint>
#include <memory>
#include <QLatin1String>
#include <QString>

class CVXSDataset;

/// The sample study: one sequence of simulated acquisitions of a small animal, and beside it what is true.
///
///     QString error;
///     if (samplestudy::make("/data/study", 1, &error) != ESTATUS_SUCCESS)
///         qFatal("%s", qPrintable(error));
///     const auto *sequence = CVXSSequenceDataset::open("/data/study/" + SEQUENCE_ID, nullptr, &error);
///
/// Counts are those of a camera with an offset, photon noise (Poisson) and read noise (normal), see Camera.h.
namespace samplestudy {

constexpr QLatin1String SEQUENCE_ID("AB20240511101000_SEQ");
/// Autofluorescence of A over that of B, in camera counts at equal exposure: the k that takes it away.
constexpr double TRUE_K = 1.25;

// The clicks, in the sequence's order.
constexpr QLatin1String FLUORESCENCE_A("AB20240511101500"); ///< reporter and autofluorescence
constexpr QLatin1String FLUORESCENCE_B("AB20240511101730"); ///< autofluorescence alone, other excitation
constexpr QLatin1String LUMINESCENCE_BIN4("AB20240511102000");
constexpr QLatin1String LUMINESCENCE_BIN8("AB20240511102400");  ///< same field, coarser
constexpr QLatin1String LUMINESCENCE_FIELD("AB20240511102900"); ///< another field of view
constexpr QLatin1String LUMINESCENCE_SIZE("AB20240511103300");  ///< same field of view, cut to another height
constexpr QLatin1String RATIO_A("AB20240511103800");
constexpr QLatin1String RATIO_B_HIGH("AB20240511104000");     ///< fluorescence level "High"
constexpr QLatin1String RATIO_B_LOW("AB20240511104200");      ///< fluorescence level "Low"
constexpr QLatin1String RATIO_B_NO_PHOTO("AB20240511104400"); ///< no photograph
constexpr QLatin1String PHOTOGRAPH_ONLY("AB20240511104600");
constexpr QLatin1String TRANSILLUMINATION("AB20240511104900"); ///< in efficiency, with excitation reference
constexpr QLatin1String OTHER_ANGLE("AB20240511105200");       ///< imaging angle 90

// The other kinds of datasets, in folders beside the sequence's.
constexpr QLatin1String OVERVIEW_FOLDER("overview");           ///< holds the sequence of the overview
constexpr QLatin1String OVERVIEW_ID("AB20240511110000_SEQ");   ///< computed of a raster, marked so
constexpr QLatin1String OVERVIEW_A("AB20240511110100");        ///< transillumination at 745 nm
constexpr QLatin1String OVERVIEW_B("AB20240511110200");        ///< at 675 nm, which goes less deep
constexpr QLatin1String RESULT_FOLDER("result");               ///< holds the dataset's folder
constexpr QLatin1String RESULT("AB_M20240511101500");          ///< FLUORESCENCE_A - TRUE_K FLUORESCENCE_B
constexpr QLatin1String UNSAVED("AB20240511111000");           ///< see unsavedClick()
constexpr QLatin1String CAMERA_FILES_FOLDER("camera-files");   ///< to be imported
constexpr QLatin1String CAMERA_FILE_A("reporter.tif");         ///< 16 bit, with the offset
constexpr QLatin1String CAMERA_FILE_B("autofluorescence.tif"); ///< the same
constexpr QLatin1String CAMERA_FILE_DARK("dark.tif");          ///< no light: the offset, which is 300
/// Autofluorescence of the first of these files over that of the second, above the offset.
constexpr double CAMERA_FILES_K = 1.60;
/// Expected counts above the offset of one of these files, vignetting included; 32-bit float.
CILImage expectedCameraFile(QLatin1String name);

// Beside the sequence's folder.
constexpr QLatin1String TRUTH_FILE("ground-truth.txt");       ///< ClickInfo syntax
constexpr QLatin1String TRUTH_REPORTER("truth-reporter.tif"); ///< expected counts of the reporter alone in A
constexpr QLatin1String TRUTH_A("truth-a.tif");               ///< expected counts of A above the offset
constexpr QLatin1String TRUTH_B("truth-b.tif");

// Keys of the truth file's section "Main Job".
constexpr QLatin1String SECTION_MAIN_JOB("Main Job");
constexpr QLatin1String KEY_TRUE_K("True k");
/// [counts^2], from the camera's noise
constexpr QLatin1String KEY_MEAN_VARIANCE("Mean Variance of A - B * k");

/// Makes the study in `folder` (created when missing): the sequence's folder, saved by the host's own
/// writers, and the truth, an overview, a result and a camera's files beside it. Every byte follows from the
/// seed (and the program's version, which a result tells). On failure a status, and `error` names file and
/// reason.
ESTATUS make(const QString &folder, std::uint64_t seed, QString *error);

/// A fluorescence click as an instrument hands it over: only in memory, which no file can be. In a sequence
/// it has a place in the sequence's folder, and no files there before the sequence is saved.
///
///     sequence->addDataset(samplestudy::unsavedClick(1).release()); // of type 2
std::unique_ptr<CVXSDataset> unsavedClick(std::uint64_t seed);

} // namespace samplestudy
