// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>

/// Sections and keys of ClickInfo.txt, AnalyzedClickInfo.txt and SequenceInfo.txt, with unit and meaning.
/// Numbers are written and read in the C locale; ConstantRanges.h gives the range of each constant.
namespace clickinfo {

// --- sections of ClickInfo.txt ---
constexpr QLatin1String SECTION_CLICK_NUMBER("ClickNumber"); ///< its name is the click number
constexpr QLatin1String SECTION_USER_INPUT("User Input");
constexpr QLatin1String SECTION_ANALYSIS_USER_INPUT("Analysis User Input");
constexpr QLatin1String SECTION_LUMINESCENT("luminescent image"); ///< its name is the file, "luminescent.tif"
constexpr QLatin1String SECTION_PHOTOGRAPH("photographic image"); ///< "photograph.tif"
constexpr QLatin1String SECTION_XRAY("xray image");               ///< "xray.tif"
constexpr QLatin1String SECTION_FLATFIELD("flat field image");    ///< "flatfield.tif"
constexpr QLatin1String SECTION_BACKGROUND("background image");   ///< "background.tif"
constexpr QLatin1String SECTION_EXCITATION("excitation image");   ///< "excitation.tif"
constexpr QLatin1String SECTION_USER_LABELS("User Label Name Set");
constexpr QLatin1String SECTION_CAMERA("Camera System Info");
constexpr QLatin1String SECTION_GRAPH_CONTROLS("Graph Controls");
/// Only when the user chose limits. Not in "Graph Controls", which goes over into a result as it is.
constexpr QLatin1String SECTION_COLOR_LIMITS("Color Limits");
constexpr QLatin1String SECTION_ROIS("ROIs"); ///< of AnalyzedClickInfo.txt
/// Of a result's AnalyzedClickInfo.txt; "luminescentA.TIF"
constexpr QLatin1String SECTION_LUMINESCENT_A("luminescent A image");
constexpr QLatin1String SECTION_LUMINESCENT_B("luminescent B image"); ///< "luminescentB.TIF"

// --- "ClickNumber" ---
constexpr QLatin1String KEY_SEQUENCE_ID("Sequence ID");
constexpr QLatin1String KEY_CLICK_INDEX("ClickNumber Index"); ///< position in the sequence, from 0
constexpr QLatin1String KEY_VERSION("Vexa Version");
constexpr QLatin1String KEY_FOLDER_ON_DISK("Folder On Disk");

// --- any image section ---
constexpr QLatin1String KEY_ACQUISITION_DATE("Acquisition Date"); ///< ISO 8601
constexpr QLatin1String KEY_BINNING("Binning Factor");            ///< sensor pixels a pixel, an axis
constexpr QLatin1String KEY_FOV("Field of View");                 ///< width of the imaged field [cm]
/// Name of the file that an image was imported from
constexpr QLatin1String KEY_IMPORTED_FROM("Imported From");
constexpr QLatin1String KEY_NOTE("Igor Wave Note"); ///< "key=value;" entries; the last pair of its section

// --- "background image" ---
constexpr QLatin1String KEY_OFFSET("Camera Offset"); ///< [counts]; of an image that is this number everywhere

// --- "luminescent image" ---
constexpr QLatin1String KEY_KIND("Acquisition Kind"); ///< one of the four below
constexpr QLatin1String KIND_LUMINESCENT("luminescent");
constexpr QLatin1String KIND_FLUORESCENT("fluorescent");
constexpr QLatin1String KIND_TRANSFLUORESCENT("transfluorescent");        ///< also counts as fluorescent
constexpr QLatin1String KIND_TRANSILLUMINATION("transillumination");      ///< also counts as fluorescent
constexpr QLatin1String KEY_EXPOSURE("Exposure Time");                    ///< t [s]
constexpr QLatin1String KEY_FNUMBER("f Number");                          ///< N
constexpr QLatin1String KEY_TRANSMISSION("Lens and Filter Transmission"); ///< T
/// [uW/cm^2]; for radiant efficiency
constexpr QLatin1String KEY_EXCITATION_IRRADIANCE("Excitation Irradiance");
constexpr QLatin1String KEY_BOTTOM_POWER("Bottom Illumination Power"); ///< [mW]; absent or not above 0: none
constexpr QLatin1String KEY_FLUORESCENCE_LEVEL("Fluorescence level string"); ///< "High", "Low", ...
constexpr QLatin1String KEY_IMAGING_ANGLE("Imaging Angle");         ///< [degrees] or a name such as "Left"
constexpr QLatin1String KEY_EXCITATION_FILTER("Excitation Filter"); ///< centre wavelength [nm]
constexpr QLatin1String KEY_EMISSION_FILTER("Emission Filter");     ///< centre wavelength [nm]
/// "1": subtracted already in the stored pixels
constexpr QLatin1String KEY_BACKGROUND_CORRECTED("Background Corrected");
/// "1": corrected already in the stored pixels
constexpr QLatin1String KEY_FLATFIELD_CORRECTED("Flat Field Corrected");
constexpr QLatin1String KEY_FL_BACKGROUND_CORRECTED("FL Background Corrected");
/// Its presence marks a result of image math
constexpr QLatin1String KEY_MATH_OPERATION("Image Math Operation");
constexpr QLatin1String KEY_MATH_K("Image Math k"); ///< as it was typed or shown
constexpr QLatin1String KEY_MATH_A("Image Math A ClickNumber");
constexpr QLatin1String KEY_MATH_B("Image Math B ClickNumber");
constexpr QLatin1String KEY_MATH_PHOTOGRAPH("Image Math Photo ClickNumber"); ///< absent: without photograph

// --- "Camera System Info" ---
constexpr QLatin1String KEY_GAIN("Electrons Per Count");              ///< g [e-/count]
constexpr QLatin1String KEY_QUANTUM_EFFICIENCY("Quantum Efficiency"); ///< QE
constexpr QLatin1String KEY_PIXEL_PITCH("Pixel Pitch");               ///< of the unbinned sensor [um]
constexpr QLatin1String KEY_MAGNIFICATION("Magnification");           ///< m, image size over object size
constexpr QLatin1String KEY_CAMERA_NAME("Camera");

// --- "Graph Controls" ---
/// unit key; of a result: the unit of its pixels
constexpr QLatin1String KEY_INTENSITY_CALIBRATION("Intensity Calibration");
constexpr QLatin1String KEY_REVERSED("Reversed");               ///< "0" or "1"
constexpr QLatin1String KEY_COLOR_TABLE("Color Table");         ///< name of the colour table
constexpr QLatin1String KEY_COLOR_TABLE_LOG("ColorTableIsLog"); ///< "0" or "1"
constexpr QLatin1String KEY_COLOR_TABLE_MIN("Color Table Min");
constexpr QLatin1String KEY_COLOR_TABLE_MAX("Color Table Max");
constexpr QLatin1String KEY_BRIGHTNESS("Brightness"); ///< whole number
constexpr QLatin1String KEY_GAMMA("Gamma");

// --- "Color Limits" ---
constexpr QLatin1String KEY_LIMITS_MODE("Mode"); ///< one of the three below
constexpr QLatin1String LIMITS_AUTO("auto");
constexpr QLatin1String LIMITS_FULL("full");
constexpr QLatin1String LIMITS_MANUAL("manual");
constexpr QLatin1String KEY_LIMITS_MIN("Min"); ///< of manual ones, in their unit
constexpr QLatin1String KEY_LIMITS_MAX("Max");
constexpr QLatin1String KEY_LIMITS_UNIT("Unit"); ///< unit key

// --- "ROIs" of AnalyzedClickInfo.txt: a pair an ROI, its key is the name, the value "kind shape; fields" ---
constexpr QLatin1String ROI_MEASUREMENT("measurement");
constexpr QLatin1String ROI_BACKGROUND("background");
constexpr QLatin1String ROI_RECTANGLE("rectangle");
constexpr QLatin1String ROI_ELLIPSE("ellipse");
constexpr QLatin1String ROI_POLYGON("polygon");
constexpr QLatin1String ROI_FREEHAND("free-hand");
constexpr QLatin1String ROI_GRID("grid");
constexpr QLatin1String ROI_LEFT("left");       ///< of the box, from the image's left edge [cm]
constexpr QLatin1String ROI_TOP("top");         ///< of the box, from the image's upper edge, downwards [cm]
constexpr QLatin1String ROI_WIDTH("width");     ///< [cm], above 0
constexpr QLatin1String ROI_HEIGHT("height");   ///< [cm], above 0
constexpr QLatin1String ROI_ROWS("rows");       ///< of a grid, 1 or more
constexpr QLatin1String ROI_COLUMNS("columns"); ///< of a grid, 1 or more
constexpr QLatin1String ROI_CORNERS("corners"); ///< of polygon and free-hand: "x y, x y, ..." [cm]

// --- SequenceInfo.txt ---
constexpr QLatin1String SECTION_SEQUENCE("Sequence");            ///< its name is the sequence ID
constexpr QLatin1String SECTION_SEQUENCE_CLICKS("ClickNumbers"); ///< one pair "Click" a dataset, in order
constexpr QLatin1String KEY_CLICK("Click");
constexpr QLatin1String KEY_ACTIVE_UNIT("Active Unit"); ///< unit key
/// "1": computed overview of a raster
constexpr QLatin1String KEY_TRANSILLUM_OVERVIEW("Transillumination Overview");
constexpr QLatin1String KEY_3D_SCENE_ONLY("3D Scene Only"); ///< "1": holds only a 3D scene

// --- the record of a result's making: members of the JSON object in its image file's description ---
constexpr QLatin1String RECORD_MADE_BY("image math");
constexpr QLatin1String RECORD_BINNING("binning"); ///< exact, of the result

// --- file names ---
constexpr QLatin1String FILE_CLICK_INFO("ClickInfo.txt");
constexpr QLatin1String FILE_ANALYZED_CLICK_INFO("AnalyzedClickInfo.txt");
constexpr QLatin1String FILE_SEQUENCE_INFO("SequenceInfo.txt");
constexpr QLatin1String FILE_LUMINESCENT("luminescent.tif");
constexpr QLatin1String FILE_LUMINESCENT_A("luminescentA.TIF"); ///< copies of a result's operands
constexpr QLatin1String FILE_LUMINESCENT_B("luminescentB.TIF");
constexpr QLatin1String FILE_PHOTOGRAPH("photograph.tif");
constexpr QLatin1String FILE_XRAY("xray.tif");
constexpr QLatin1String FILE_FLATFIELD("flatfield.tif");
constexpr QLatin1String FILE_BACKGROUND("background.tif");
constexpr QLatin1String FILE_EXCITATION("excitation.tif");

} // namespace clickinfo
