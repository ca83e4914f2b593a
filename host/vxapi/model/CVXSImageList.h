// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/model/VXTypes.h"

#include <QSet>

/// Which images a dataset holds.
class VXAPI_EXPORT CVXSImageList
{
public:
    /// Whether there is an image of that type. The flag is not used and kept for the interface.
    bool isPresent(tag_eimagetype type, bool unused = false) const
    {
        Q_UNUSED(unused)
        return m_types.contains(type);
    }
    void setPresent(tag_eimagetype type, bool present)
    {
        if (present)
            m_types.insert(type);
        else
            m_types.remove(type);
    }

private:
    QSet<int> m_types;
};
