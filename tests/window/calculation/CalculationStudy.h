// SPDX-License-Identifier: MIT
#pragma once

// The study and the expectations that the tests of the window's computation share.

#include "tests/support/PixelCompare.h"
#include "tests/support/WindowProbe.h"

#include <cmath>

namespace calculation {

using namespace pixelcompare;

const QString A = "AB20260102030405", B = "AB20260102030406", COARSE = "AB20260102030407",
              OTHER_FIELD = "AB20260102030408", OTHER_SIZE = "AB20260102030409",
              PHOTO_ONLY = "AB20260102030410", PHOTO_ONLY_2 = "AB20260102030411",
              BINNING_6 = "AB20260102030412", NAN_FIELD = "AB20260102030413", UNKNOWN = "AB20260102039999";
const QString INVALID = "One or more dataset(s) is/are invalid...", NEED_TWO = "Need two images.";
const QString CANNOT = "Can't combine images", FOV = "having different FOV.", SIZES = "of different sizes.";

inline ClickSpec click(const QString &number, int size = 48, float binning = 4.0f, double field = 12.5)
{
    ClickSpec spec;
    spec.clickNumber = number;
    spec.width = spec.height = size;
    spec.binning = binning;
    spec.fieldOfView = field;
    const float offset = float(number.right(2).toInt());
    spec.counts = [offset](int x, int y) { return 100.0f + offset + float(x) + 2.0f * float(y); };
    return spec;
}

inline ClickSpec photographOnly(const QString &number)
{
    ClickSpec spec;
    spec.clickNumber = number;
    spec.counts = nullptr;
    spec.photograph = [](int x, int) { return x < 20 ? 10.0f : 900.0f; };
    return spec;
}

inline void fill(TestStudy &study)
{
    study.add(click(A));
    study.add(click(B));
    study.add(click(COARSE, 24, 8.0f));
    study.add(click(OTHER_FIELD, 48, 4.0f, std::nextafter(12.5, 13.0)));
    study.add(click(OTHER_SIZE, 47));
    study.add(photographOnly(PHOTO_ONLY));
    study.add(photographOnly(PHOTO_ONLY_2));
    study.add(click(BINNING_6, 32, 6.0f));
    ClickSpec noField = click(NAN_FIELD);
    noField.luminescentKeys.insert(clickinfo::KEY_FOV, QString());
    study.add(noField);
}

const QStringList RUN{"slot 0 takes A",  "slot 1 takes B", "range of A and B", "slot 2 takes result",
                      "range of result", "settings",       "refresh"};

// An earlier result with palette and bar of its own, to see whether a run leaves them.
struct Earlier
{
    explicit Earlier(WindowProbe &window)
    {
        window.m_resultImage = imageOf({1, 2, 3, 4, 5, 6}, 3, 2, 2.0f);
        CILPalette palette;
        palette.SetColorTable(VXS_CT_BLUEHOT, 3.0, 7.0, 0, 0);
        window.m_resultImage.setPalette(palette);
        window.m_pColorbarResult->palette.SetImageMinMax(5.0, 9.0);
    }
    static bool isStill(const WindowProbe &window)
    {
        CILPalette palette;
        palette.SetColorTable(VXS_CT_BLUEHOT, 3.0, 7.0, 0, 0);
        return difference(window.m_resultImage, {1, 2, 3, 4, 5, 6}, 3, 2).isEmpty() &&
               window.m_resultImage.getPalette() == palette && window.m_resultImage.binningFactor() == 2.0f;
    }
};

} // namespace calculation
