// The PDF page surface: what poppler reads back from the file stands where the drawing calls say,
// on a page of the size asked.
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

struct Word {
  double xMin, yMin, xMax, yMax;
};

// Each word's box, as pdftotext finds it.
std::map<std::string, Word> WordsOf(const QString& pdf) {
  const QString html = QString::fromStdString(RunTool("pdftotext -bbox '" + pdf.toStdString() + "' - 2>/dev/null"));
  static const QRegularExpression word(
      R"re(<word xMin="([-\d.]+)" yMin="([-\d.]+)" xMax="([-\d.]+)" yMax="([-\d.]+)">([^<]*)</word>)re");
  std::map<std::string, Word> words;
  for (auto it = word.globalMatch(html); it.hasNext();) {
    const auto m = it.next();
    words.emplace(m.captured(5).toStdString(), Word{m.captured(1).toDouble(), m.captured(2).toDouble(),
                                                    m.captured(3).toDouble(), m.captured(4).toDouble()});
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
  int wrap = 0;
  {
    Ref<Graphics> g = New<Graphics>(MakePdfSurface(pdf.toStdString(), 612, 1008));
    g->TextFont = "geneva";
    g->TextSize = 16;
    address = g->State();
    g->DrawString(String("Brown") + Chr(13) + "High" + Chr(13) + "Leeds", 250, 275, 0);
    wrap = static_cast<int>(std::ceil(g->StringWidth("Payment within thirty")));
    g->DrawString("Payment within thirty days please", 20, 750, wrap);
    g->DrawPicture(logo, 410, 5);
    g->ForeColor = 0xFF0000;
    g->DrawLine(20, 110, 180, 110);
    g->DrawStopIcon(100, 20);
  }
  const std::string info = RunTool("pdfinfo '" + pdf.toStdString() + "' 2>/dev/null");
  EXPECT_TRUE(QString::fromStdString(info).contains(QRegularExpression(R"(Pages:\s+1\n[\s\S]*Page size:\s+612 x 1008 pts)"))) << info;
  EXPECT_NE(RunTool("pdfimages -list '" + pdf.toStdString() + "' 2>/dev/null").find("   40    20 "), std::string::npos);

  const auto words = WordsOf(pdf);
  for (const char* w : {"Brown", "High", "Leeds", "Payment", "days"}) ASSERT_EQ(words.count(w), 1u) << w;
  // y is the first line's baseline, with more of the box above it; the lines at the same x, one
  // line height apart; a wrapped text's lines each at its x.
  EXPECT_GT(275 - words.at("Brown").yMin, words.at("Brown").yMax - 275);
  const double lineHeight = LineHeight(address);
  for (const auto& [w, k] : std::vector<std::pair<std::string, int>>{{"Brown", 0}, {"High", 1}, {"Leeds", 2}}) {
    EXPECT_NEAR(words.at(w).xMin, 250, 0.5) << w;
    EXPECT_NEAR(words.at(w).yMin - words.at("Brown").yMin, k * lineHeight, 0.5) << w;
  }
  EXPECT_NEAR(words.at("days").xMin, 20, 0.5);
  EXPECT_GT(words.at("days").yMin, words.at("Payment").yMax);

  // The ink: a one-point line centred on y 110 straddles the pixel rows 109 and 110; the icon is
  // red around a white bar, with its corners cut.
  RunTool("pdftoppm -r 72 -png -singlefile '" + pdf.toStdString() + "' '" + dir.filePath("ink").toStdString() + "'");
  const QImage page(dir.filePath("ink.png"));
  ASSERT_EQ(page.size(), QSize(612, 1008));
  EXPECT_TRUE(Reddish(page.pixel(100, 110)) || Reddish(page.pixel(100, 109)));
  EXPECT_TRUE(White(page.pixel(100, 105)));
  EXPECT_TRUE(White(page.pixel(10, 110)));
  EXPECT_TRUE(Reddish(page.pixel(116, 25)));
  EXPECT_TRUE(White(page.pixel(116, 36)));
  EXPECT_TRUE(White(page.pixel(140, 36)));
  EXPECT_TRUE(White(page.pixel(101, 21)));
}

}  // namespace
