// SPDX-License-Identifier: MIT
#pragma once

class CPLSection;

/// Whether two acquisitions were taken from the same imaging angle.
///
///     const auto angles = imagingangles::compare(infoA[SECTION_LUMINESCENT], infoB[SECTION_LUMINESCENT]);
///     if (angles == imagingangles::Comparison::Different)
///         ... // ask the user, or refuse
namespace imagingangles {

enum class Comparison {
    Same,      ///< equal in any case of letters, or recorded in neither
    Different, ///< an angle that only one of them records differs from none
    Unknown,   ///< one of the sections is not there
};

/// Compares the values of "Imaging Angle" in the two ClickInfo sections of the luminescent image; null: a
/// dataset has no such section.
Comparison compare(const CPLSection *luminescentA, const CPLSection *luminescentB);

} // namespace imagingangles
