// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// The user's guide as it is shown in the program. Its pages are the Markdown files that the browser of the
/// repository shows, too.
namespace guide {

/// The folder of the pages, beside the program: ../share/doc/vexa, seen from it.
QString folder();

/// A page as HTML that QTextBrowser shows: tables with lines, headings that links can name ("#where-results-lie"),
/// and links to other pages of the guide with the ending ".html" (QTextBrowser would take ".md" for its own).
QString toHtml(const QByteArray &markdown);

/// The name by which a link finds a heading: lower case, without punctuation, with "-" for blanks.
QString anchorOf(const QString &heading);

} // namespace guide
