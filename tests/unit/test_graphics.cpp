// Graphics: when a job ends, the faces and the measuring of texts, pictures, and page setups. What
// each page draws is in the snapshots of the pages.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <cmath>
#include <memory>
#include <vector>

#include "GuiApp.h"
#include "rb/Files.h"
#include "rb/Graphics.h"
#include "rb/Runtime.h"

namespace {

String ThreeLines() { return String("Brown & Co") + Chr(13) + "12 High Street" + Chr(13) + "Leeds"; }

FontState Times16Bold() {
  FontState s;
  s.font = "times";
  s.size = 16;
  s.bold = true;
  return s;
}

class GraphicsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { EnsureGuiApp(); }
  std::vector<std::vector<DrawOp>> pages;
  Ref<Graphics> Open() {
    return New<Graphics>(std::make_unique<RecordingSurface>(
        [this](const std::vector<DrawOp>& ops) { pages.push_back(ops); }));
  }
};

// The job ends, once, when the last reference goes, also when an exception stops the handler that
// held it; what was drawn before the stop goes out, a picture that is nil draws nothing.
TEST_F(GraphicsTest, AJobEndsOnceWhenItsLastReferenceGoesWithWhatWasDrawn) {
  {
    Ref<Graphics> g = Open();
    Ref<Graphics> other = g;
    g->DrawString("A", 20, 30);
    g = nil;
    EXPECT_TRUE(pages.empty());
    other->DrawPicture(Ref<Picture>(), 410, 5);
    other->DrawString("B", 20, 50);
  }
  ASSERT_EQ(pages.size(), 1u);
  ASSERT_EQ(pages[0].size(), 2u);
  EXPECT_EQ(pages[0][1].text, "B");
  auto handler = [&] {
    Ref<Graphics> g = Open();
    g->DrawString("before", 20, 30);
    Ref<Picture> none;
    none->Width();
  };
  EXPECT_THROW(handler(), NilObjectException);
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(pages[1].size(), 1u);
}

// The faces are found without regard to case; a width is the widest line's, in the state in force.
TEST_F(GraphicsTest, FontNamesResolveWithoutRegardToCaseAndWidthsFollowTheState) {
  EXPECT_EQ(ResolveFamily("TiMeS"), "Nimbus Roman");
  EXPECT_EQ(ResolveFamily("no such face"), ResolveFamily("Geneva"));
  Ref<Graphics> g = Open();
  g->TextFont = "TIMES";
  g->TextSize = 16;
  g->Bold = true;
  EXPECT_EQ(g->StringWidth("Amount due: "), MeasureWidth(Times16Bold(), "Amount due: "));
  EXPECT_EQ(g->StringWidth(ThreeLines()), g->StringWidth("12 High Street"));
}

TEST_F(GraphicsTest, StringHeightCountsTheLinesTimesTheLineHeight) {
  Ref<Graphics> g = Open();
  for (const char* font : {"times", "geneva"}) {
    g->TextFont = font;
    g->TextSize = 18;
    const Integer one = g->StringHeight("Brown & Co", 500);
    EXPECT_EQ(one, static_cast<Integer>(LineHeight(g->State())));
    EXPECT_GT(one, 18);
    EXPECT_EQ(g->StringHeight(ThreeLines(), 500), 3 * one) << font;
    EXPECT_EQ(g->StringHeight(ThreeLines(), 0), 3 * one) << font;
  }
}

// Chr(13) breaks a line (LF and CR LF too, for texts from elsewhere); a wrap breaks at blanks so
// that each line fits, each paragraph on its own, and a word wider than the wrap stands alone.
TEST_F(GraphicsTest, LinesBreakAtChr13AndWrapAtBlanksWithinTheWidth) {
  const FontState s = Times16Bold();
  const std::vector<std::string> three = {"Brown & Co", "12 High Street", "Leeds"};
  EXPECT_EQ(LayoutLines(s, ThreeLines(), 0), three);
  EXPECT_EQ(LayoutLines(s, "Brown & Co\n12 High Street\r\nLeeds", 0), three);
  EXPECT_EQ(LayoutLines(s, String("Leeds") + Chr(13), 0), (std::vector<std::string>{"Leeds", ""}));
  const int wrap = static_cast<int>(std::ceil(std::max(MeasureWidth(s, "alpha beta"), MeasureWidth(s, "gamma delta"))));
  ASSERT_GT(MeasureWidth(s, "alpha beta gamma"), wrap);
  EXPECT_EQ(LayoutLines(s, String("alpha beta gamma delta") + Chr(13) + "alpha", wrap),
            (std::vector<std::string>{"alpha beta", "gamma delta", "alpha"}));
  const int narrow = static_cast<int>(std::ceil(MeasureWidth(s, "a b")));
  EXPECT_EQ(LayoutLines(s, "a b Supercalifragilistic c", narrow),
            (std::vector<std::string>{"a b", "Supercalifragilistic", "c"}));
}

TEST_F(GraphicsTest, PicturesDecodeAtTheirNaturalSizeAndAnythingElseIsNil) {
  QTemporaryDir dir;
  for (const char* format : {"PNG", "BMP", "JPG", "TIFF"}) {
    const QString path = dir.filePath(QString("logo.") + format);
    QImage image(120, 45, QImage::Format_RGB32);
    image.fill(Qt::blue);
    ASSERT_TRUE(image.save(path, format));
    Ref<Picture> p = GetFolderItem(String(path.toStdString()))->OpenAsPicture();
    ASSERT_NE(p, nil) << format;
    EXPECT_EQ(std::make_pair(p->Width(), p->Height()), std::make_pair(120, 45)) << format;
    // Drawn at its own size, or at the size asked.
    Ref<Graphics> g = Open();
    g->DrawPicture(p, 410, 5, -10000, -10000, 0, 0, -10000, -10000);
    g->DrawPicture(p, 0, 0, 75, 30);
  }
  ASSERT_EQ(pages.size(), 4u);
  EXPECT_EQ(std::make_pair(pages[0][0].width, pages[0][0].height), std::make_pair(120, 45));
  EXPECT_EQ(std::make_pair(pages[0][1].width, pages[0][1].height), std::make_pair(75, 30));
  EXPECT_EQ(GetFolderItem(String(dir.path().toStdString()))->OpenAsPicture(), nil);
  QFile text(dir.filePath("notes.png"));
  ASSERT_TRUE(text.open(QIODevice::WriteOnly));
  text.write("not an image at all");
  text.close();
  EXPECT_EQ(GetFolderItem(String(text.fileName().toStdString()))->OpenAsPicture(), nil);
}

// A new setup holds the default page of its time, turned by Landscape; its text tells both.
TEST(PrinterSetupTest, ANewSetupHoldsTheDefaultPaperAndLandscapeTurnsIt) {
  PrinterSetup before;
  PrinterSetup::SetDefaultPaper(420, 595);  // A5
  PrinterSetup after;
  PrinterSetup::SetDefaultPaper(595, 842);
  EXPECT_EQ(std::make_pair(before.PageWidth(), before.PageHeight()), std::make_pair(595, 842));
  EXPECT_EQ(std::make_pair(after.PageWidth(), after.PageHeight()), std::make_pair(420, 595));
  const std::string portrait = before.SetupString().Utf8();
  before.Landscape = true;
  EXPECT_EQ(std::make_pair(before.PageWidth(), before.PageHeight()), std::make_pair(842, 595));
  EXPECT_NE(portrait.find("595"), std::string::npos);
  EXPECT_NE(before.SetupString().Utf8(), portrait);
}

}  // namespace
