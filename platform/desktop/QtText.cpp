// SPDX-License-Identifier: GPL-3.0-or-later
#include "QtText.h"

namespace desk {

QString ToWidgetText(const String& text) {
  QString s = Q(text);
  s.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  s.replace(QChar('\r'), QChar('\n'));
  return s;
}

std::string FromWidgetText(const QString& text) {
  QString s = text;
  s.replace(QChar('\n'), QChar('\r'));
  s.replace(QChar::ParagraphSeparator, QChar('\r'));
  s.replace(QChar::LineSeparator, QChar('\r'));
  return s.toStdString();
}

int ToUtf16Index(const QString& text, int characters) {
  int i = 0;
  for (int seen = 0; i < text.size() && seen < characters; ++seen)
    i += (text.at(i).isHighSurrogate() && i + 1 < text.size()) ? 2 : 1;
  return i;
}

int ToCharacterIndex(const QString& text, int utf16) {
  int characters = 0;
  for (int i = 0; i < text.size() && i < utf16; ++characters)
    i += (text.at(i).isHighSurrogate() && i + 1 < text.size()) ? 2 : 1;
  return characters;
}

}  // namespace desk
