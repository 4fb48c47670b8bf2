#pragma once
// The program's rich text documents ("lecran.rtf") shown in a
// text browser: the RTF is turned into the HTML subset Qt displays. Only
// what these documents use is read: paragraphs and line breaks, bold and
// italic, colours of the colour table, font sizes, indents and spacing,
// tabs, non-breaking spaces, code-page 1252 escapes and \u characters.

#include <QByteArray>
#include <QString>

namespace ostrane::gui {

QString RtfToHtml(const QByteArray& rtf);

// The document of the start directory, or the program's own copy of it
// (resource "help/<name>") when the folder has none. Empty when neither.
QByteArray ReadDocument(const QString& startDirectory, const QString& name);

}  // namespace ostrane::gui
