// SPDX-License-Identifier: MIT
#pragma once

/// Sections and keys of ClickInfo.txt, AnalyzedClickInfo.txt and SequenceInfo.txt, with unit and meaning.
/// Numbers are written and read in the C locale.
namespace clickinfo {

// --- sections of ClickInfo.txt ---
constexpr char SECTION_CLICK_NUMBER[] = "ClickNumber"; ///< its name is the click number
constexpr char SECTION_USER_INPUT[] = "User Input";
constexpr char SECTION_ANALYSIS_USER_INPUT[] = "Analysis User Input";
constexpr char SECTION_LUMINESCENT[] = "luminescent image"; ///< its name is the file, "luminescent.tif"
constexpr char SECTION_PHOTOGRAPH[] = "photographic image"; ///< "photograph.tif"
constexpr char SECTION_XRAY[] = "xray image";               ///< "xray.tif"
constexpr char SECTION_FLATFIELD[] = "flat field image";    ///< "flatfield.tif"
constexpr char SECTION_BACKGROUND[] = "background image";   ///< "background.tif"
constexpr char SECTION_EXCITATION[] = "excitation image";   ///< "excitation.tif"
constexpr char SECTION_USER_LABELS[] = "User Label Name Set";
constexpr char SECTION_CAMERA[] = "Camera System Info";
constexpr char SECTION_GRAPH_CONTROLS[] = "Graph Controls";
constexpr char SECTION_ROIS[] = "ROIs"; ///< of AnalyzedClickInfo.txt
constexpr char SECTION_LUMINESCENT_A[] =
    "luminescent A image"; ///< of a result's AnalyzedClickInfo.txt; "luminescentA.TIF"
constexpr char SECTION_LUMINESCENT_B[] = "luminescent B image"; ///< "luminescentB.TIF"

// --- "ClickNumber" ---
constexpr char KEY_SEQUENCE_ID[] = "Sequence ID";
constexpr char KEY_CLICK_INDEX[] = "ClickNumber Index"; ///< position in the sequence, from 0
constexpr char KEY_VERSION[] = "Vexa Version";
constexpr char KEY_FOLDER_ON_DISK[] = "Folder On Disk";

// --- any image section ---
constexpr char KEY_ACQUISITION_DATE[] = "Acquisition Date"; ///< ISO 8601
constexpr char KEY_BINNING[] = "Binning Factor";            ///< sensor pixels a pixel, an axis; 1 or more
constexpr char KEY_FOV[] = "Field of View";                 ///< width of the imaged field [cm]
constexpr char KEY_IMPORTED_FROM[] = "Imported From"; ///< name of the file that an image was imported from
constexpr char KEY_NOTE[] = "Igor Wave Note";         ///< "key=value;" entries; the last pair of its section

// --- "luminescent image" ---
constexpr char KEY_KIND[] = "Acquisition Kind"; ///< one of the four below
constexpr char KIND_LUMINESCENT[] = "luminescent";
constexpr char KIND_FLUORESCENT[] = "fluorescent";
constexpr char KIND_TRANSFLUORESCENT[] = "transfluorescent";        ///< also counts as fluorescent
constexpr char KIND_TRANSILLUMINATION[] = "transillumination";      ///< also counts as fluorescent
constexpr char KEY_EXPOSURE[] = "Exposure Time";                    ///< t [s], above 0
constexpr char KEY_FNUMBER[] = "f Number";                          ///< N, above 0
constexpr char KEY_TRANSMISSION[] = "Lens and Filter Transmission"; ///< T, above 0 to 1
constexpr char KEY_EXCITATION_IRRADIANCE[] =
    "Excitation Irradiance"; ///< [uW/cm^2], above 0; for radiant efficiency
constexpr char KEY_BOTTOM_POWER[] = "Bottom Illumination Power";       ///< [mW]; absent or not above 0: none
constexpr char KEY_FLUORESCENCE_LEVEL[] = "Fluorescence level string"; ///< "High", "Low", ...
constexpr char KEY_IMAGING_ANGLE[] = "Imaging Angle";                  ///< [degrees] or a name such as "Left"
constexpr char KEY_EXCITATION_FILTER[] = "Excitation Filter";          ///< centre wavelength [nm]
constexpr char KEY_EMISSION_FILTER[] = "Emission Filter";              ///< centre wavelength [nm]
constexpr char KEY_BACKGROUND_CORRECTED[] =
    "Background Corrected"; ///< "1": subtracted already in the stored pixels
constexpr char KEY_FLATFIELD_CORRECTED[] =
    "Flat Field Corrected"; ///< "1": corrected already in the stored pixels
constexpr char KEY_FL_BACKGROUND_CORRECTED[] = "FL Background Corrected";
constexpr char KEY_MATH_OPERATION[] = "Image Math Operation"; ///< its presence marks a result of image math
constexpr char KEY_MATH_K[] = "Image Math k";                 ///< as it was typed or shown
constexpr char KEY_MATH_A[] = "Image Math A ClickNumber";
constexpr char KEY_MATH_B[] = "Image Math B ClickNumber";
constexpr char KEY_MATH_PHOTOGRAPH[] = "Image Math Photo ClickNumber"; ///< absent: without photograph

// --- "Camera System Info" ---
constexpr char KEY_GAIN[] = "Electrons Per Count";              ///< g [e-/count], above 0
constexpr char KEY_QUANTUM_EFFICIENCY[] = "Quantum Efficiency"; ///< QE, above 0 to 1
constexpr char KEY_PIXEL_PITCH[] = "Pixel Pitch";               ///< of the unbinned sensor [um], above 0
constexpr char KEY_MAGNIFICATION[] = "Magnification";           ///< m, image size over object size, above 0
constexpr char KEY_CAMERA_NAME[] = "Camera";

// --- "Graph Controls" ---
constexpr char KEY_INTENSITY_CALIBRATION[] =
    "Intensity Calibration";                              ///< unit key; of a result: the unit of its pixels
constexpr char KEY_REVERSED[] = "Reversed";               ///< "0" or "1"
constexpr char KEY_COLOR_TABLE[] = "Color Table";         ///< name of the colour table
constexpr char KEY_COLOR_TABLE_LOG[] = "ColorTableIsLog"; ///< "0" or "1"
constexpr char KEY_COLOR_TABLE_MIN[] = "Color Table Min";
constexpr char KEY_COLOR_TABLE_MAX[] = "Color Table Max";
constexpr char KEY_BRIGHTNESS[] = "Brightness"; ///< whole number
constexpr char KEY_GAMMA[] = "Gamma";

// --- "ROIs" of AnalyzedClickInfo.txt: a pair an ROI, its key is the name, the value "kind shape; fields" ---
constexpr char ROI_MEASUREMENT[] = "measurement";
constexpr char ROI_BACKGROUND[] = "background";
constexpr char ROI_RECTANGLE[] = "rectangle";
constexpr char ROI_ELLIPSE[] = "ellipse";
constexpr char ROI_POLYGON[] = "polygon";
constexpr char ROI_FREEHAND[] = "free-hand";
constexpr char ROI_GRID[] = "grid";
constexpr char ROI_LEFT[] = "left";       ///< of the box, from the image's left edge [cm]
constexpr char ROI_TOP[] = "top";         ///< of the box, from the image's upper edge, downwards [cm]
constexpr char ROI_WIDTH[] = "width";     ///< [cm], above 0
constexpr char ROI_HEIGHT[] = "height";   ///< [cm], above 0
constexpr char ROI_ROWS[] = "rows";       ///< of a grid, 1 or more
constexpr char ROI_COLUMNS[] = "columns"; ///< of a grid, 1 or more
constexpr char ROI_CORNERS[] = "corners"; ///< of polygon and free-hand: "x y, x y, ..." [cm]

// --- SequenceInfo.txt ---
constexpr char SECTION_SEQUENCE[] = "Sequence";            ///< its name is the sequence ID
constexpr char SECTION_SEQUENCE_CLICKS[] = "ClickNumbers"; ///< one pair "Click" a dataset, in order
constexpr char KEY_CLICK[] = "Click";
constexpr char KEY_ACTIVE_UNIT[] = "Active Unit"; ///< unit key
constexpr char KEY_TRANSILLUM_OVERVIEW[] =
    "Transillumination Overview";                     ///< "1": computed overview of a raster
constexpr char KEY_3D_SCENE_ONLY[] = "3D Scene Only"; ///< "1": holds only a 3D scene

// --- file names ---
constexpr char FILE_CLICK_INFO[] = "ClickInfo.txt";
constexpr char FILE_ANALYZED_CLICK_INFO[] = "AnalyzedClickInfo.txt";
constexpr char FILE_SEQUENCE_INFO[] = "SequenceInfo.txt";
constexpr char FILE_LUMINESCENT[] = "luminescent.tif";
constexpr char FILE_LUMINESCENT_A[] = "luminescentA.TIF"; ///< copies of a result's operands
constexpr char FILE_LUMINESCENT_B[] = "luminescentB.TIF";
constexpr char FILE_PHOTOGRAPH[] = "photograph.tif";

} // namespace clickinfo
