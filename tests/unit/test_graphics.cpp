// SPDX-License-Identifier: GPL-3.0-or-later
// Graphics at the edges the pages' snapshots do not reach: when a job ends, faces asked for in any
// case or not at all, the breaking of lines, pictures of every kind, and the default paper. What
// each page draws, measured, is in the snapshots of the pages.
#include <gtest/gtest.h>

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

// Faces are found without regard to case, and an unknown one falls back to the sans face. Chr(13)
// breaks a line (LF and CR LF too, for texts from elsewhere); a wrap breaks at blanks so that each
// line fits, each paragraph on its own, and a word wider than the wrap stands alone.
TEST_F(GraphicsTest, FacesResolveInAnyCaseAndLinesBreakAtChr13AndWrapAtBlanks) {
  EXPECT_EQ(ResolveFamily("TiMeS"), ResolveFamily("times"));
  EXPECT_EQ(ResolveFamily("no such face"), ResolveFamily("Geneva"));
  FontState s;
  s.font = "times";
  s.size = 16;
  s.bold = true;
  const std::vector<std::string> three = {"Brown & Co", "12 High Street", "Leeds"};
  EXPECT_EQ(LayoutLines(s, String("Brown & Co") + Chr(13) + "12 High Street" + Chr(13) + "Leeds", 0), three);
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

// Every kind of picture a logo may be decodes at its natural size, and is drawn at the size asked;
// a folder is no picture.
TEST_F(GraphicsTest, PicturesOfEveryKindDecodeAtTheirNaturalSize) {
  QTemporaryDir dir;
  Ref<Picture> p;
  for (const char* format : {"PNG", "BMP", "JPG", "TIFF"}) {
    const QString path = dir.filePath(QString("logo.") + format);
    QImage image(120, 45, QImage::Format_RGB32);
    image.fill(Qt::blue);
    ASSERT_TRUE(image.save(path, format));
    p = GetFolderItem(String(path.toStdString()))->OpenAsPicture();
    ASSERT_NE(p, nil) << format;
    EXPECT_EQ(std::make_pair(p->Width(), p->Height()), std::make_pair(120, 45)) << format;
  }
  Open()->DrawPicture(p, 0, 0, 75, 30);
  ASSERT_EQ(pages.size(), 1u);
  EXPECT_EQ(std::make_pair(pages[0][0].width, pages[0][0].height), std::make_pair(75, 30));
  EXPECT_EQ(GetFolderItem(String(dir.path().toStdString()))->OpenAsPicture(), nil);
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
  EXPECT_EQ(portrait, "paper=595x842;landscape=0");
  EXPECT_EQ(before.SetupString().Utf8(), "paper=595x842;landscape=1");
}

}  // namespace
