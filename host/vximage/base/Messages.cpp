// SPDX-License-Identifier: MIT
#include "host/vximage/base/Messages.h"

namespace il {
namespace {

// Never destroyed, so that an image that dies late may still speak.
std::function<void(int, const std::string &)> &handlerSlot()
{
    static auto *slot = new std::function<void(int, const std::string &)>;
    return *slot;
}

std::string &fileErrorSlot()
{
    static auto *slot = new std::string;
    return *slot;
}

} // namespace

void setMessageHandler(std::function<void(int, const std::string &)> handler)
{
    handlerSlot() = std::move(handler);
}

void message(int level, const std::string &text)
{
    if (handlerSlot())
        handlerSlot()(level, text);
}

const std::string &lastFileError()
{
    return fileErrorSlot();
}

EILSTATUS fileError(EILSTATUS status, const std::string &path, const std::string &reason)
{
    fileErrorSlot() = path + ": " + reason;
    return status;
}

} // namespace il
