// SPDX-License-Identifier: MIT
#pragma once

#include "host/vximage/base/VXImageTypes.h"

#include <functional>
#include <string>

namespace il {

/// Level of a message that the user should see, as in the host's log.
constexpr int MESSAGE_ERROR = 3;

void setMessageHandler(std::function<void(int, const std::string &)> handler);
void message(int level, const std::string &text);

/// "file: reason" of the file operation that failed last.
const std::string &lastFileError();
/// Keeps and reports it; returns the status for the caller to hand on.
EILSTATUS fileError(EILSTATUS status, const std::string &path, const std::string &reason);

} // namespace il
