// The PDF page surface: what poppler reads back from the file must stand where the recording
// says it does.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "GuiApp.h"
#include "rb/Files.h"
#include "PictureImpl.h"
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
  std::string text;
};

std::vector<Word> WordsOf(const QString& pdf) {
  const QString html =
      QString::fromStdString(RunTool("pdftotext -bbox '" + pdf.toStdString() + "' - 2>/dev/null"));
  static const QRegularExpression word(
      R"re(<word xMin="([-\d.]+)" yMin="([-\d.]+)" xMax="([-\d.]+)" yMax="([-\d.]+)">([^<]*)</word>)re");
  std::vector<Word> words;
  for (auto it = word.globalMatch(html); it.hasNext();) {
    const auto m = it.next();
    words.push_back({m.captured(1).toDouble(), m.captured(2).toDouble(), m.captured(3).toDouble(),
                     m.captured(4).toDouble(), m.captured(5).toStdString()});
  }
  return words;
}

const Word* Find(const std::vector<Word>& words, const std::string& text) {
  for (const Word& w : words)
    if (w.text == text) return &w;
  return nullptr;
}

class PdfTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { EnsureGuiApp(); }
  QTemporaryDir dir;
  QString Path(const char* name) { return dir.filePath(name); }

  // A Graphics that writes the PDF and records the same page.
  Ref<Graphics> OpenJob(const QString& path, std::vector<DrawOp>& recorded, double w = 595,
                        double h = 842) {
    std::vector<std::unique_ptr<PageSurface>> parts;
    parts.push_back(MakePdfSurface(path.toStdString(), w, h));
    parts.push_back(std::make_unique<RecordingSurface>(
        [&recorded](const std::vector<DrawOp>& ops) { recorded = ops; }));
    return New<Graphics>(std::make_unique<TeeSurface>(std::move(parts)));
  }
};

TEST_F(PdfTest, ThePageHasTheSizeAsked) {
  for (auto [w, h] : {std::pair{595, 842}, std::pair{842, 595}, std::pair{612, 1008}}) {
    const QString path = Path("size.pdf");
    MakePdfSurface(path.toStdString(), w, h)->Finish();
    const std::string info = RunTool("pdfinfo '" + path.toStdString() + "' 2>/dev/null");
    const QString text = QString::fromStdString(info);
    EXPECT_TRUE(text.contains(QRegularExpression(R"(Pages:\s+1\n)"))) << info;
    const QString size = QString(R"(Page size:\s+%1 x %2 pts)").arg(w).arg(h);
    EXPECT_TRUE(text.contains(QRegularExpression(size))) << info;
  }
}

TEST_F(PdfTest, ARightAlignedAmountEndsWhereItsMeasuredWidthSays) {
  const QString path = Path("due.pdf");
  std::vector<DrawOp> recorded;
  double labelWidth = 0, amountWidth = 0, bareLabelWidth = 0;
  int labelX = 0, amountX = 0;
  {
    Ref<Graphics> g = OpenJob(path, recorded);
    g->TextFont = "times";
    g->TextSize = 16;
    g->Bold = true;
    labelWidth = g->StringWidth("Amount due: ");
    bareLabelWidth = g->StringWidth("Amount due:");
    amountWidth = g->StringWidth("1234.56");
    labelX = 465 - CInt(labelWidth);
    amountX = 550 - CInt(amountWidth);
    g->DrawString("Amount due: ", labelX, 610);
    g->DrawString("1234.56", amountX, 610);
  }
  // The recording measures with the same face as the page.
  FontState state;
  state.font = "times";
  state.size = 16;
  state.bold = true;
  EXPECT_EQ(labelWidth, MeasureWidth(state, "Amount due: "));
  ASSERT_EQ(recorded.size(), 2u);
  EXPECT_EQ(recorded[0].x, labelX);
  EXPECT_EQ(recorded[1].x, amountX);

  const auto words = WordsOf(path);
  const Word* amount = Find(words, "1234.56");
  const Word* due = Find(words, "due:");
  const Word* first = Find(words, "Amount");
  ASSERT_TRUE(amount && due && first);
  EXPECT_NEAR(amount->xMin, amountX, 0.5);
  EXPECT_NEAR(amount->xMax, amountX + amountWidth, 0.5);
  EXPECT_GE(amount->xMax, 550 - 0.5);
  EXPECT_LT(amount->xMax, 551 + 0.5);
  EXPECT_NEAR(first->xMin, labelX, 0.5);
  EXPECT_NEAR(due->xMax, labelX + bareLabelWidth, 0.5);
  // y is the baseline: the word's box holds it, with more of the box above than below.
  for (const Word* w : {amount, due}) {
    EXPECT_LT(w->yMin, 610);
    EXPECT_GT(w->yMax, 610);
    EXPECT_GT(610 - w->yMin, w->yMax - 610);
  }
}

TEST_F(PdfTest, LineBreaksGiveLinesAtTheSameXOneLineHeightApart) {
  const QString path = Path("address.pdf");
  std::vector<DrawOp> recorded;
  FontState state;
  {
    Ref<Graphics> g = OpenJob(path, recorded);
    g->TextFont = "geneva";
    g->TextSize = 18;
    g->Bold = true;
    state = g->State();
    g->DrawString(String("Brown") + Chr(13) + "High" + Chr(13) + "Leeds", 250, 275, 0);
  }
  ASSERT_EQ(recorded.size(), 1u);
  const auto words = WordsOf(path);
  const Word* lines[] = {Find(words, "Brown"), Find(words, "High"), Find(words, "Leeds")};
  ASSERT_TRUE(lines[0] && lines[1] && lines[2]);
  const double lineHeight = LineHeight(state);
  for (int k = 0; k < 3; ++k) {
    EXPECT_NEAR(lines[k]->xMin, 250, 0.5) << k;
    EXPECT_NEAR(lines[k]->yMin - lines[0]->yMin, k * lineHeight, 0.5) << k;
  }
  EXPECT_LT(lines[0]->yMin, 275);
  EXPECT_GT(lines[0]->yMax, 275);
}

TEST_F(PdfTest, WrappedTextBreaksOnThePageAsLayoutSays) {
  const QString path = Path("terms.pdf");
  std::vector<DrawOp> recorded;
  FontState state;
  const String terms = "Payment within thirty days of the invoice date please";
  int wrap = 0;
  {
    Ref<Graphics> g = OpenJob(path, recorded);
    g->TextFont = "times";
    g->TextSize = 10;
    state = g->State();
    wrap = static_cast<int>(g->StringWidth("Payment within thirty days"));
    g->DrawString(terms, 20, 750, wrap);
  }
  const auto lines = LayoutLines(state, terms, wrap);
  ASSERT_GT(lines.size(), 1u);
  const auto words = WordsOf(path);
  for (std::size_t k = 0; k < lines.size(); ++k) {
    const std::string firstWord = lines[k].substr(0, lines[k].find(' '));
    const Word* w = Find(words, firstWord);
    ASSERT_NE(w, nullptr) << firstWord;
    EXPECT_NEAR(w->xMin, 20, 0.5) << firstWord;
  }
}

TEST_F(PdfTest, APictureGoesOnThePageAtItsNaturalSize) {
  QImage image(40, 20, QImage::Format_RGB32);
  image.fill(Qt::darkGreen);
  const QString png = Path("logo.png");
  ASSERT_TRUE(image.save(png, "PNG"));
  Ref<Picture> logo = GetFolderItem(String(png.toStdString()))->OpenAsPicture();
  ASSERT_NE(logo, nil);

  const QString withLogo = Path("logo.pdf");
  std::vector<DrawOp> recorded;
  {
    Ref<Graphics> g = OpenJob(withLogo, recorded);
    g->DrawPicture(logo, 410, 5, -10000, -10000, 0, 0, -10000, -10000);
  }
  const std::string list = RunTool("pdfimages -list '" + withLogo.toStdString() + "' 2>/dev/null");
  EXPECT_NE(list.find("   40    20 "), std::string::npos) << list;
}

// Renders the page at 72 dpi, one pixel to the point, to look at its ink.
QImage Render(const QString& pdf, const QString& prefix) {
  RunTool("pdftoppm -r 72 -png -singlefile '" + pdf.toStdString() + "' '" + prefix.toStdString() +
          "' 2>/dev/null");
  return QImage(prefix + ".png");
}

bool Reddish(QRgb c) { return qRed(c) > 150 && qGreen(c) < 100 && qBlue(c) < 100; }
bool White(QRgb c) { return qRed(c) > 235 && qGreen(c) > 235 && qBlue(c) > 235; }

TEST_F(PdfTest, LinesAndTheStopIconAreInkedWhereTheyWereDrawn) {
  const QString path = Path("ink.pdf");
  std::vector<DrawOp> recorded;
  {
    Ref<Graphics> g = OpenJob(path, recorded, 200, 200);
    g->ForeColor = 0xFF0000;
    g->DrawLine(20, 110, 180, 110);
    g->DrawStopIcon(100, 20);
  }
  const QImage page = Render(path, Path("ink"));
  ASSERT_EQ(page.size(), QSize(200, 200));
  // A one-point line centred on y 110 straddles the pixel rows 109 and 110.
  EXPECT_TRUE(Reddish(page.pixel(100, 110)) || Reddish(page.pixel(100, 109)));
  EXPECT_TRUE(White(page.pixel(100, 105)));
  EXPECT_TRUE(White(page.pixel(10, 110)));
  // The icon: red around a white bar across its middle, nothing outside its square.
  EXPECT_TRUE(Reddish(page.pixel(116, 25)));
  EXPECT_TRUE(White(page.pixel(116, 36)));
  EXPECT_TRUE(White(page.pixel(100 + 40, 36)));
  EXPECT_TRUE(White(page.pixel(101, 21)));  // the octagon's cut corner
}

}  // namespace
