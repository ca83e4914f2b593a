// SPDX-License-Identifier: MIT
#pragma once

#include "app/datasets/DatasetParts.h"

class BannerWidget;
class LogPane;
class PluginManager;

/// The parts that the main window puts together and owns.
struct WorkspaceParts : DatasetParts
{
    PluginManager *plugins = nullptr;
    BannerWidget *banner = nullptr;
    LogPane *logPane = nullptr;
};
