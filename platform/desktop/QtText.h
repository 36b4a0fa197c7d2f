// SPDX-License-Identifier: GPL-3.0-or-later
// The boundary between the platform's texts and Qt's: Chr(13) is the platform's line break, and
// positions count characters where Qt counts UTF-16 units.
#pragma once

#include <QColor>
#include <QString>

#include "rb/Core.h"
#include "rb/String.h"

namespace desk {

// For a widget: Chr(13) (and CR LF) becomes "\n".
QString ToWidgetText(const String& text);
// From a widget: "\n" and U+2029 become Chr(13).
std::string FromWidgetText(const QString& text);
// Plain conversion, no line ends touched.
inline QString Q(const String& text) { return QString::fromStdString(text.Utf8()); }

// A character position in the platform's count to a UTF-16 position of the same text, and back.
int ToUtf16Index(const QString& text, int characters);
int ToCharacterIndex(const QString& text, int utf16);

inline QColor ToQColor(Color c) { return QColor(c.Red(), c.Green(), c.Blue()); }

}  // namespace desk
