// SPDX-License-Identifier: MIT
#pragma once

#include "host/vxapi/vxapi_global.h"

#include <QFont>
#include <QPointF>
#include <QSize>
#include <QStringList>

class CVXSMultiImageView;

/// A text over a multi-image view: lines, optionally with a border. It may outlive its view and the other way
/// round.
class VXAPI_EXPORT CVXSTextTag
{
public:
    CVXSTextTag();
    ~CVXSTextTag();
    CVXSTextTag(const CVXSTextTag &) = delete;
    CVXSTextTag &operator=(const CVXSTextTag &) = delete;

    void setStringList(const QStringList &lines);
    QStringList getStringList() const { return m_lines; }

    /// Size in window pixels that the lines take, border margin included. Needs no view.
    QSize getSize() const;
    /// Places the tag's left top corner (object units of its view). When the tag's size in object units
    /// changes afterwards (another text, another widget size), its centre stays.
    void setPosition(double x, double y);
    /// Left top corner as it stands now, in object units.
    QPointF position() const;

    void showBorder(bool on);
    bool hasBorder() const { return m_border; }
    void show(bool on);
    bool isShown() const { return m_shown; }

    /// That of all texts in a view but the bars' numbers.
    static QFont font();

private:
    friend class CVXSMultiImageView;
    QSizeF sizeInObjectUnits() const;
    void changed();

    CVXSMultiImageView *m_view = nullptr;
    QStringList m_lines;
    QPointF m_center;
    bool m_border = true;
    bool m_shown = true;
};
