// SPDX-License-Identifier: MIT
#pragma once

// The study of the tests on the computation's numbers, and the formulas pixel by pixel in plain words.

#include "host/vxapi/model/CVXSDataset.h"
#include "host/vxapi/model/CVXSSequenceDataset.h"
#include "tests/support/PixelCompare.h"
#include "tests/support/TestStudy.h"

#include <limits>

namespace pixelstudy {

using namespace pixelcompare;

const QString A = "AB20260102030405", B = "AB20260102030406", FINE = "AB20260102030407",
              HIGH = "AB20260102030408", PHOTO = "AB20260102030409", SMALL_PHOTO = "AB20260102030410",
              EQUAL_PHOTO = "AB20260102030411", SPECIAL = "AB20260102030412", TALL_PHOTO = "AB20260102030413";
constexpr int SIZE = 32;
constexpr int RATIO = 4;

inline float countsA(int x, int y)
{
    return 500.0f + 3.25f * float(x) + 0.7f * float(y);
}
inline float countsB(int x, int y)
{
    return 90.0f + float((x * 5 + y * 3) % 40);
}
inline float countsFine(int x, int y)
{
    return float((x * 7 + y * 11) % 256);
}
inline float bright(int x, int y, int size)
{
    return x > size / 3 && y > size / 5 ? 5000.0f + float(x) : 100.0f + float(y % 3);
}

inline void fill(TestStudy &study)
{
    ClickSpec spec;
    spec.clickNumber = A;
    spec.counts = countsA;
    study.add(spec);
    spec.clickNumber = B;
    spec.counts = countsB;
    spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, "7"}};
    study.add(spec);
    spec.clickNumber = HIGH;
    spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, "7"}, {clickinfo::KEY_FLUORESCENCE_LEVEL, "hIGH"}};
    study.add(spec);
    spec.luminescentKeys = {{clickinfo::KEY_EXPOSURE, "7"}, {clickinfo::KEY_FLUORESCENCE_LEVEL, "High "}};
    const auto withPhotograph = [&](const QString &number, int width, int height) {
        spec.clickNumber = number;
        spec.photographWidth = width;
        spec.photographHeight = height;
        spec.photograph = [width](int x, int y) { return bright(x, y, width); };
        study.add(spec);
    };
    withPhotograph(PHOTO, 75, 75);
    withPhotograph(SMALL_PHOTO, 20, 20);
    withPhotograph(EQUAL_PHOTO, SIZE, SIZE);
    withPhotograph(TALL_PHOTO, SIZE, 2 * SIZE);
    ClickSpec fine;
    fine.clickNumber = FINE;
    fine.width = fine.height = 2 * SIZE;
    fine.binning = 2.0f;
    fine.counts = countsFine;
    study.add(fine);
    ClickSpec special;
    special.clickNumber = SPECIAL;
    special.counts = [](int x, int y) {
        const float values[] = {0.0f,
                                -0.0f,
                                std::numeric_limits<float>::quiet_NaN(),
                                std::numeric_limits<float>::infinity(),
                                -5.0f,
                                1.0e-42f,
                                3.0e38f,
                                100.0f};
        return values[(x + 3 * y) % 8];
    };
    study.add(special);
}

inline Pixels calibrated(const TestStudy &study, const QString &click, tag_edisplayunit unit)
{
    CILImage image;
    study.sequence()->getDataset(click)->getCalibratedLuminImage(unit, &image, "test");
    return pixelsOf(image);
}

inline Pixels countsBinnedByTwo(const Pixels &fine)
{
    Pixels coarse;
    for (int y = 0; y < SIZE; ++y) {
        for (int x = 0; x < SIZE; ++x) {
            const auto at = [&](int dx, int dy) {
                return double(fine[std::size_t(2 * y + dy) * 2 * SIZE + std::size_t(2 * x + dx)]);
            };
            coarse.push_back(float(at(0, 0) + at(1, 0) + at(0, 1) + at(1, 1)));
        }
    }
    return coarse;
}

inline float apply(int index, float a, float b, float counts, float k, float scale, float mask)
{
    const float kb = b * k;
    switch (index) {
    case 0:
        return kb + a;
    case 1:
        return a - kb;
    case 2:
        return kb * a;
    case 3: {
        const float quotient = a / b;
        return quotient * k;
    }
    default: {
        const float kept = a * (counts > k ? 1.0f : 0.0f);
        const float ratio = kept / b;
        const float scaled = ratio * scale;
        return scaled * mask;
    }
    }
}

inline Pixels expected(int index, const Pixels &a, const Pixels &b, const Pixels &counts, float k,
                       float scale = 10.0f, const Pixels &mask = {})
{
    Pixels result;
    for (std::size_t i = 0; i < a.size(); ++i)
        result.push_back(apply(index, a[i], b[i], counts[i], k, scale, mask.empty() ? 1.0f : mask[i]));
    return result;
}

} // namespace pixelstudy
