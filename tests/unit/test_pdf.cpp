// SPDX-License-Identifier: GPL-3.0-or-later
// The PDF page surface: what poppler reads back from the file stands where the drawing calls say.
// (A page's size is in the runner's own scenario, the baseline of a word in the desktop's print.)
#include <gtest/gtest.h>

#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "GuiApp.h"
#include "rb/Files.h"
#include "rb/Graphics.h"
#include "rb/Runtime.h"

namespace {

std::string RunTool(const std::string& command) {
  std::string out;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return out;
  char buffer[4096];
  std::size_t n;
  while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) out.append(buffer, n);
  pclose(pipe);
  return out;
}

// Each word's left end and top, as pdftotext finds them.
std::map<std::string, std::pair<double, double>> WordsOf(const QString& pdf) {
  const QString html = QString::fromStdString(RunTool("pdftotext -bbox '" + pdf.toStdString() + "' - 2>/dev/null"));
  static const QRegularExpression word(R"re(<word xMin="([-\d.]+)" yMin="([-\d.]+)" [^>]*>([^<]*)</word>)re");
  std::map<std::string, std::pair<double, double>> words;
  for (auto it = word.globalMatch(html); it.hasNext();) {
    const auto m = it.next();
    words.emplace(m.captured(3).toStdString(), std::make_pair(m.captured(1).toDouble(), m.captured(2).toDouble()));
  }
  return words;
}

bool Reddish(QRgb c) { return qRed(c) > 150 && qGreen(c) < 100 && qBlue(c) < 100; }
bool White(QRgb c) { return qRed(c) > 235 && qGreen(c) > 235 && qBlue(c) > 235; }

TEST(PdfSurface, TextsLinesPicturesAndTheIconStandWhereTheyWereDrawn) {
  EnsureGuiApp();
  QTemporaryDir dir;
  const QString pdf = dir.filePath("page.pdf");
  QImage image(40, 20, QImage::Format_RGB32);
  image.fill(Qt::darkGreen);
  ASSERT_TRUE(image.save(dir.filePath("logo.png"), "PNG"));
  Ref<Picture> logo = GetFolderItem(String(dir.filePath("logo.png").toStdString()))->OpenAsPicture();
  ASSERT_NE(logo, nil);

  FontState address;
  {
    Ref<Graphics> g = New<Graphics>(MakePdfSurface(pdf.toStdString(), 612, 1008));
    g->TextFont = "geneva";
    g->TextSize = 16;
    address = g->State();
    g->DrawString(String("Brown") + Chr(13) + "High" + Chr(13) + "Leeds", 250, 275, 0);
    const int wrap = static_cast<int>(std::ceil(g->StringWidth("Payment within thirty")));
    g->DrawString("Payment within thirty days please", 20, 750, wrap);
    g->DrawPicture(logo, 410, 5);
    g->ForeColor = 0xFF0000;
    g->DrawLine(20, 110, 180, 110);
    g->DrawStopIcon(100, 20);
  }
  // The lines of a text at the same x, one line height apart; a wrapped text's lines each at its x.
  const auto words = WordsOf(pdf);
  for (const char* w : {"Brown", "High", "Leeds", "Payment", "days"}) ASSERT_EQ(words.count(w), 1u) << w;
  const double lineHeight = LineHeight(address);
  for (const auto& [w, k] : std::vector<std::pair<std::string, int>>{{"Brown", 0}, {"High", 1}, {"Leeds", 2}}) {
    EXPECT_NEAR(words.at(w).first, 250, 0.5) << w;
    EXPECT_NEAR(words.at(w).second - words.at("Brown").second, k * lineHeight, 0.5) << w;
  }
  EXPECT_NEAR(words.at("days").first, 20, 0.5);
  EXPECT_NEAR(words.at("days").second - words.at("Payment").second, lineHeight, 0.5);

  // The ink: the picture at its own size; a one-point line centred on y 110 straddles the pixel
  // rows 109 and 110; the icon is red around a white bar, with its corners cut.
  RunTool("pdftoppm -r 72 -png -singlefile '" + pdf.toStdString() + "' '" + dir.filePath("ink").toStdString() + "'");
  const QImage page(dir.filePath("ink.png"));
  ASSERT_EQ(page.size(), QSize(612, 1008));
  EXPECT_TRUE(qGreen(page.pixel(448, 23)) > 100 && qRed(page.pixel(448, 23)) < 50);
  EXPECT_TRUE(White(page.pixel(452, 27)));
  EXPECT_TRUE(Reddish(page.pixel(100, 110)) || Reddish(page.pixel(100, 109)));
  EXPECT_TRUE(White(page.pixel(100, 105)));
  EXPECT_TRUE(White(page.pixel(10, 110)));
  EXPECT_TRUE(Reddish(page.pixel(116, 25)));
  EXPECT_TRUE(White(page.pixel(116, 36)));
  EXPECT_TRUE(White(page.pixel(140, 36)));
  EXPECT_TRUE(White(page.pixel(101, 21)));
}

}  // namespace
