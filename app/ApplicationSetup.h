// SPDX-License-Identifier: MIT
#pragma once

/// What every program around the main window sets up, around the construction of its QApplication.
namespace ApplicationSetup {

/// Screen scaling: has to be chosen before there is an application object.
void beforeApplication();

/// Name, version and icon; numbers in the C locale everywhere, validators of number fields included.
void afterApplication();

} // namespace ApplicationSetup
