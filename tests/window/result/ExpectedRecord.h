// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// What the result of the clicks of ResultBench must read like, section by section; `from` is the operand of
/// the photograph, "A", "B" or nothing.
namespace expectedrecord {

inline QString photoNumber(const QString &from)
{
    return from == QLatin1String("A") ? QStringLiteral("AB20260102030406")
                                      : QStringLiteral("AB20260102030507");
}

inline QStringList pairsOfTheOperation(const QString &from)
{
    QStringList pairs{
        "CCD Corrected = 1",
        "Background Corrected = 0",
        "Flat Field Corrected = 0",
        "FL Background Corrected = 0",
        "Image Math Operation = A - B * k",
        "Image Math k = 2.50",
        "Image Math A ClickNumber = AB20260102030406",
        "Image Math B ClickNumber = AB20260102030507",
    };
    if (!from.isEmpty())
        pairs << "Image Math Photo ClickNumber = " + photoNumber(from);
    return pairs;
}

/// What is appended to the note of the luminescent image.
inline QString noteOfTheOperation(const QString &from)
{
    QString note = QStringLiteral(
        "Folder On Disk=;Saturated=0;CCD Corrected=1;Background Corrected=0;Flat Field Corrected=0;"
        "Image Math Operation=A - B * k;Image Math k=2.50;Image Math A ClickNumber=AB20260102030406;"
        "Image Math B ClickNumber=AB20260102030507;");
    if (!from.isEmpty())
        note += "Image Math Photo ClickNumber=" + photoNumber(from) + ";";
    return note;
}

inline QStringList luminescentPairs(const QString &from)
{
    return QStringList{
               "Acquisition Kind = luminescent",
               "Field of View = 12.5",
               "Exposure Time = 60",
               "f Number = 1",
               "Lens and Filter Transmission = 0.5",
               "Excitation Irradiance = 20",
               "Imaging Angle = 0",
               "Acquisition Date = 2026-01-02T03:04:06",
               "Saturated = 1",
               "Binning Factor = 4",
               "Acquisition Date = 2026-01-02T03:04:06",
               "Saturated = 0",
           } +
           pairsOfTheOperation(from) +
           QStringList{"Igor Wave Note = A=1;Binning Factor=4;Z=26;" + noteOfTheOperation(from)};
}

inline QStringList photographPairs(const QString &from)
{
    if (from == QLatin1String("A"))
        return {
            "Field of View = 12.5",
            "Acquisition Date = 2026-01-02T03:05:00",
            "Acquisition Date = 2026-01-02T03:05:00",
            "CCD Corrected = 1",
            "isRotated = 0",
            "Igor Wave Note = P=1;Q=2;Folder On Disk=;CCD Corrected=1;isRotated=0;",
        };
    return {
        "Acquisition Date = 2026-01-02T03:06:00",
        "Field of View = 12.5",
        "Of B = yes",
        "Acquisition Date = 2026-01-02T03:06:00",
        "CCD Corrected = 1",
        "isRotated = 0",
        "Igor Wave Note = PB=1;Folder On Disk=;CCD Corrected=1;isRotated=0;",
    };
}

inline QStringList graphPairs(const QString &from)
{
    QStringList pairs{
        "Color Table = Grays",
        "Intensity Calibration = counts",
        "Window = 3",
        "Intensity Calibration = counts",
        "Reversed = 1",
        "Color Table = BlueHot",
        "ColorTableIsLog = 0",
        "Color Table Min = 12.500000",
        "Color Table Max = 150.250000",
        "Raw Color Table Min = 75.000000",
        "Raw Color Table Max = 168.000000",
    };
    if (from == QLatin1String("A"))
        pairs += QStringList{"Brightness = -3", "Gamma = 1.500000"};
    if (from == QLatin1String("B"))
        pairs += QStringList{"Brightness = 12", "Gamma = 0.750000"};
    return pairs << "Color Table = BlueHot";
}

inline QStringList clickInfo(const QString &from)
{
    QStringList lines{
        "[ClickNumber]: AB_M20260102030406",
        "Group = 7",
        "Vexa Version = 0.9.0",
        "Vexa Version = (this build)",
        "Folder On Disk =",
        "",
        "[User Input]: input of A",
        "Experiment = mouse 12",
        "Comment =",
        "",
        "[Analysis User Input]",
        "Comment = analysed twice",
        "",
        "[luminescent image]: luminescent.tif",
    };
    lines << luminescentPairs(from);
    lines << ""
          << "[User Label Name Set]: labels of A"
          << "Label 1 = Animal"
          << "";
    if (!from.isEmpty())
        lines << "[photographic image]: photograph.tif" << photographPairs(from) << "";
    lines << "[Camera System Info]: camera of A"
          << "Electrons Per Count = 2"
          << "Quantum Efficiency = 0.8"
          << "Pixel Pitch = 13.5"
          << "Magnification = 0.2"
          << ""
          << "[Graph Controls]";
    return lines << graphPairs(from) << "";
}

/// The analyzed record, when B's unit is radiance.
inline QStringList analyzed(const QString &from)
{
    QStringList lines{
        "[ClickNumber]: AB_M20260102030406",
        "Sequence ID = AB20260102030405_SEQ",
        "ClickNumber Index = 0",
        "Vexa Version = (this build)",
        "Folder On Disk =",
        "",
        "[User Input]: analysed input",
        "Experiment = mouse 12, analysed",
        "",
        "[Analysis User Input]: analysis",
        "Reader = second",
        "",
    };
    if (!from.isEmpty())
        lines << "[photographic image]: photograph.tif" << photographPairs(from) << "";
    lines << "[User Label Name Set]: analysed labels"
          << "Label 1 = Animal, analysed"
          << ""
          << "[luminescent image]: luminescent.tif" << luminescentPairs(from) << ""
          << "[luminescent A image]: luminescentA.TIF"
          << "Acquisition Kind = luminescent"
          << "Field of View = 12.5"
          << "Exposure Time = 60"
          << "f Number = 1"
          << "Lens and Filter Transmission = 0.5"
          << "Excitation Irradiance = 20"
          << "Imaging Angle = 0"
          << "Acquisition Date = 2026-01-02T03:04:06"
          << "Saturated = 1"
          << "Binning Factor = 9"
          << "Igor Wave Note = A=1;Sequence ID=X;Binning Factor=9;ClickNumber Index=0;Z=26;"
          << "Intensity Calibration = Radiance (Photons)"
          << ""
          << "[luminescent B image]: luminescentB.TIF"
          << "Acquisition Kind = luminescent"
          << "Field of View = 12.5"
          << "Imaging Angle = 0"
          << "Acquisition Date = 2026-01-02T03:05:07"
          << "Binning Factor = 4"
          << "Of B = yes"
          << "Igor Wave Note = B=1;"
          << "Intensity Calibration = Radiance (Photons)"
          << ""
          << "[Graph Controls]: old graph" << graphPairs(from) << ""
          << "[ROIs]: regions of A";
    return lines << "";
}

} // namespace expectedrecord
