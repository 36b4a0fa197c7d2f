// SPDX-License-Identifier: GPL-3.0-or-later
// The faces behind the font names, and the metrics every page surface shares.
#include "Fonts.h"

#include <QFile>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "rb/Graphics.h"

namespace {

struct Faces {
  QString serif;  // stands for "times"
  QString sans;   // stands for "geneva", "System" and every name we do not have
};

// Loads the font files themselves rather than trusting fontconfig's names: the family it reports
// can carry a foundry ("Nimbus Roman [urw]"), and the Type 1 copies of the same face that it also
// knows have no kerning, so a name alone could measure with one file and paint with another.
QString LoadFamily(const QStringList& files, const QString& fallback) {
  QString family;
  for (const QString& file : files) {
    if (!QFile::exists(file)) continue;
    const int id = QFontDatabase::addApplicationFont(file);
    if (id < 0) continue;
    const QStringList names = QFontDatabase::applicationFontFamilies(id);
    if (family.isEmpty() && !names.isEmpty()) family = names.first();
  }
  return family.isEmpty() ? fallback : family;
}

const Faces& InstalledFaces() {
  static const Faces faces = [] {
    if (qGuiApp == nullptr) qFatal("Fonts are measured before InitRuntime made the application object");
    Faces f;
    const QString urw = QStringLiteral("/usr/share/fonts/opentype/urw-base35/");
    f.serif = LoadFamily({urw + "NimbusRoman-Regular.otf", urw + "NimbusRoman-Bold.otf",
                          urw + "NimbusRoman-Italic.otf", urw + "NimbusRoman-BoldItalic.otf"},
                         QStringLiteral("Nimbus Roman"));
    const QString dejavu = QStringLiteral("/usr/share/fonts/truetype/dejavu/");
    f.sans = LoadFamily({dejavu + "DejaVuSans.ttf", dejavu + "DejaVuSans-Bold.ttf",
                         dejavu + "DejaVuSans-Oblique.ttf", dejavu + "DejaVuSans-BoldOblique.ttf"},
                        QStringLiteral("DejaVu Sans"));
    return f;
  }();
  return faces;
}

// The text's lines as typed: Chr(13) breaks a line; LF and CR LF are taken the same way, in case
// a text reached us from a file written elsewhere.
std::vector<std::string> SplitParagraphs(const std::string& text) {
  std::vector<std::string> lines;
  std::string current;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r' || c == '\n') {
      lines.push_back(current);
      current.clear();
      if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else {
      current += c;
    }
  }
  lines.push_back(current);
  return lines;
}

double LineWidth(const QFontMetricsF& metrics, const std::string& line) {
  return metrics.horizontalAdvance(QString::fromStdString(line));
}

// Greedy breaking at blanks: each line takes as many words as fit within wrap; the blanks at a
// break are dropped, a word wider than wrap stands alone.
void WrapParagraph(const QFontMetricsF& metrics, const std::string& para, int wrap,
                   std::vector<std::string>& out) {
  std::size_t lineStart = 0;
  std::size_t lineEnd = 0;  // end of the last word that fits on the current line
  std::size_t pos = 0;
  bool haveWord = false;
  while (pos < para.size()) {
    std::size_t wordStart = para.find_first_not_of(' ', pos);
    if (wordStart == std::string::npos) break;
    std::size_t wordEnd = para.find(' ', wordStart);
    if (wordEnd == std::string::npos) wordEnd = para.size();
    if (haveWord && LineWidth(metrics, para.substr(lineStart, wordEnd - lineStart)) > wrap) {
      out.push_back(para.substr(lineStart, lineEnd - lineStart));
      lineStart = wordStart;
    }
    lineEnd = wordEnd;
    haveWord = true;
    pos = wordEnd;
  }
  out.push_back(para.substr(lineStart, (haveWord ? lineEnd : para.size()) - lineStart));
}

}  // namespace

std::string ResolveFamily(const std::string& fontName) {
  const Faces& faces = InstalledFaces();
  const QString name = QString::fromStdString(fontName).trimmed().toCaseFolded();
  if (name == QLatin1String("times")) return faces.serif.toStdString();
  return faces.sans.toStdString();
}

QFont FontFor(const FontState& state) {
  QFont font(QString::fromStdString(ResolveFamily(state.font)));
  font.setPixelSize(std::max(1, static_cast<int>(state.size + 0.5)));
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setBold(state.bold);
  font.setItalic(state.italic);
  font.setUnderline(state.underline);
  return font;
}

double MeasureWidth(const FontState& state, const String& text) {
  const QFontMetricsF metrics(FontFor(state));
  double widest = 0;
  for (const std::string& line : SplitParagraphs(text.Utf8()))
    widest = std::max(widest, LineWidth(metrics, line));
  return widest;
}

// Whole points, so that the lines of a text stand at whole offsets and a text of n lines is
// exactly n times as high as one line.
double LineHeight(const FontState& state) {
  return std::round(QFontMetricsF(FontFor(state)).lineSpacing());
}

std::vector<std::string> LayoutLines(const FontState& state, const String& text, int wrap) {
  std::vector<std::string> paragraphs = SplitParagraphs(text.Utf8());
  if (wrap <= 0) return paragraphs;
  const QFontMetricsF metrics(FontFor(state));
  std::vector<std::string> lines;
  for (const std::string& para : paragraphs) WrapParagraph(metrics, para, wrap, lines);
  return lines;
}
