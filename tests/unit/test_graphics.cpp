// Graphics, its surfaces, fonts, pictures, page setups and the print dialog, checked through the
// operations a recording surface keeps.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "GuiApp.h"
#include "PictureImpl.h"
#include "rb/Graphics.h"
#include "rb/Runtime.h"
#include "rb/Screen.h"

namespace {

// A Graphics whose finished page lands in `pages`.
struct Job {
  std::vector<std::vector<DrawOp>> pages;
  Ref<Graphics> Open() {
    return New<Graphics>(std::make_unique<RecordingSurface>(
        [this](const std::vector<DrawOp>& ops) { pages.push_back(ops); }));
  }
};

const std::vector<DrawOp>& Ops(Graphics& g) {
  return static_cast<RecordingSurface*>(g.Surface())->Ops();
}

String ThreeLines() {
  return String("Brown & Co") + Chr(13) + "12 High Street" + Chr(13) + "Leeds";
}

class GraphicsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { EnsureGuiApp(); }
};

TEST_F(GraphicsTest, StateSetOnceStaysOverEveryDrawingUntilSetAgain) {
  Job job;
  Ref<Graphics> g = job.Open();
  g->TextFont = "times";
  g->TextSize = 16;
  g->Bold = true;
  g->ForeColor = 0xA6A6A6;
  g->DrawString("one", 20, 100);
  g->DrawString("two", 20, 120);
  g->DrawLine(20, 130, 530, 130);
  g->DrawString("three", 20, 140);
  g->TextSize = 10;
  g->DrawString("four", 20, 160);

  const auto& ops = Ops(*g);
  ASSERT_EQ(ops.size(), 5u);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(ops[i].state.font, "times") << i;
    EXPECT_EQ(ops[i].state.size, 16) << i;
    EXPECT_TRUE(ops[i].state.bold) << i;
    EXPECT_EQ(ops[i].color, Color(0xA6A6A6)) << i;
  }
  EXPECT_EQ(ops[4].state.size, 10);
  EXPECT_TRUE(ops[4].state.bold);
}

TEST_F(GraphicsTest, DrawStringKeepsTheWholeTextWithItsPlaceAndWrapEvenWhenEmpty) {
  Job job;
  Ref<Graphics> g = job.Open();
  g->DrawString(ThreeLines(), 100, 150, 0);
  g->DrawString("", 550, 610);
  g->DrawString("Net 30 days", 20, 750, 520);
  const auto& ops = Ops(*g);
  ASSERT_EQ(ops.size(), 3u);
  EXPECT_EQ(ops[0].kind, DrawOp::Text);
  EXPECT_EQ(ops[0].text, ThreeLines().Utf8());
  EXPECT_EQ(ops[0].x, 100);
  EXPECT_EQ(ops[0].y, 150);
  EXPECT_EQ(ops[1].text, "");
  EXPECT_EQ(ops[1].x, 550);
  EXPECT_EQ(ops[1].y, 610);
  EXPECT_EQ(ops[2].wrap, 520);
}

TEST_F(GraphicsTest, ANewGraphicsDrawsInTheSystemFontAtTwelveInBlack) {
  Job job;
  Ref<Graphics> g = job.Open();
  g->DrawString("Yikes!", 0, 42);
  const DrawOp& op = Ops(*g).at(0);
  EXPECT_EQ(op.state.font, "System");
  EXPECT_EQ(op.state.size, 12);
  EXPECT_FALSE(op.state.bold);
  EXPECT_FALSE(op.state.italic);
  EXPECT_EQ(op.color, Color(0x000000));
}

TEST_F(GraphicsTest, TheJobEndsOnceWhenTheLastReferenceGoes) {
  Job job;
  {
    Ref<Graphics> g = job.Open();
    Ref<Graphics> other = g;
    g->DrawString("A", 20, 30);
    g = nil;
    EXPECT_TRUE(job.pages.empty());
    other->DrawString("B", 20, 50);
  }
  ASSERT_EQ(job.pages.size(), 1u);
  ASSERT_EQ(job.pages[0].size(), 2u);
  EXPECT_EQ(job.pages[0][1].text, "B");
}

TEST_F(GraphicsTest, AJobStoppedByAnExceptionStillEndsWithWhatWasDrawn) {
  Job job;
  auto handler = [&] {
    Ref<Graphics> g = job.Open();
    g->DrawString("before", 20, 30);
    Ref<Picture> none;
    none->Width();  // throws
    g->DrawString("after", 20, 50);
  };
  EXPECT_THROW(handler(), NilObjectException);
  ASSERT_EQ(job.pages.size(), 1u);
  ASSERT_EQ(job.pages[0].size(), 1u);
  EXPECT_EQ(job.pages[0][0].text, "before");
}

TEST_F(GraphicsTest, DrawPictureOfNilDrawsNothingAndTheDrawingGoesOn) {
  Job job;
  Ref<Graphics> g = job.Open();
  Ref<Picture> logo;  // no logo loaded
  g->DrawPicture(logo, 410, 5, -10000, -10000, 0, 0, -10000, -10000);
  g->DrawLine(20, 110, 530, 110);
  const auto& ops = Ops(*g);
  ASSERT_EQ(ops.size(), 1u);
  EXPECT_EQ(ops[0].kind, DrawOp::Line);
}

TEST_F(GraphicsTest, LinesAndTheStopIconKeepTheirPoints) {
  Job job;
  Ref<Graphics> g = job.Open();
  g->ForeColor = 0xD2D2D2;
  g->DrawLine(47, 280, 47, 480);
  g->DrawStopIcon(3, 4);
  const auto& ops = Ops(*g);
  ASSERT_EQ(ops.size(), 2u);
  EXPECT_EQ(ops[0].kind, DrawOp::Line);
  EXPECT_EQ(ops[0].x, 47);
  EXPECT_EQ(ops[0].y, 280);
  EXPECT_EQ(ops[0].x2, 47);
  EXPECT_EQ(ops[0].y2, 480);
  EXPECT_EQ(ops[0].color, Color(0xD2D2D2));
  EXPECT_EQ(ops[1].kind, DrawOp::StopIcon);
  EXPECT_EQ(ops[1].x, 3);
  EXPECT_EQ(ops[1].y, 4);
  EXPECT_GT(ops[1].width, 0);
  EXPECT_GT(ops[1].height, 0);
}

TEST_F(GraphicsTest, TeeSurfaceGivesEveryPartEachOperationAndTheEnd) {
  int endedA = 0, endedB = 0;
  std::vector<DrawOp> a, b;
  std::vector<std::unique_ptr<PageSurface>> parts;
  parts.push_back(std::make_unique<RecordingSurface>([&](const std::vector<DrawOp>& ops) {
    ++endedA;
    a = ops;
  }));
  parts.push_back(std::make_unique<RecordingSurface>([&](const std::vector<DrawOp>& ops) {
    ++endedB;
    b = ops;
  }));
  {
    Graphics g(std::make_unique<TeeSurface>(std::move(parts)));
    g.DrawString("Invoice to:", 20, 130);
    g.DrawLine(20, 280, 530, 280);
  }
  EXPECT_EQ(endedA, 1);
  EXPECT_EQ(endedB, 1);
  ASSERT_EQ(a.size(), 2u);
  ASSERT_EQ(b.size(), 2u);
  EXPECT_EQ(a[0].text, "Invoice to:");
  EXPECT_EQ(b[1].kind, DrawOp::Line);
}

// ---- Fonts and measuring

FontState Times16Bold() {
  FontState s;
  s.font = "times";
  s.size = 16;
  s.bold = true;
  return s;
}

TEST_F(GraphicsTest, FontNamesResolveWithoutRegardToCase) {
  EXPECT_EQ(ResolveFamily("times"), ResolveFamily("TIMES"));
  EXPECT_EQ(ResolveFamily("Geneva"), ResolveFamily("geneva"));
  FontState lower = Times16Bold(), upper = Times16Bold();
  upper.font = "TiMeS";
  EXPECT_EQ(MeasureWidth(lower, "Amount due: "), MeasureWidth(upper, "Amount due: "));
}

TEST_F(GraphicsTest, TimesIsNimbusRomanAndTheRestIsDejaVuSans) {
  if (QFile::exists("/usr/share/fonts/opentype/urw-base35/NimbusRoman-Regular.otf")) {
    EXPECT_EQ(ResolveFamily("times"), "Nimbus Roman");
  }
  if (QFile::exists("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf")) {
    EXPECT_EQ(ResolveFamily("geneva"), "DejaVu Sans");
    EXPECT_EQ(ResolveFamily("System"), "DejaVu Sans");
    EXPECT_EQ(ResolveFamily("no such face"), "DejaVu Sans");
  }
  FontState times = Times16Bold(), geneva = Times16Bold();
  geneva.font = "geneva";
  EXPECT_NE(MeasureWidth(times, "Amount due: "), MeasureWidth(geneva, "Amount due: "));
}

TEST_F(GraphicsTest, StringWidthFollowsTheStateAndTakesTheWidestLine) {
  Job job;
  Ref<Graphics> g = job.Open();
  g->TextFont = "times";
  g->TextSize = 16;
  const double plain = g->StringWidth("Amount due: ");
  EXPECT_GT(plain, 0);
  g->Bold = true;
  const double bold = g->StringWidth("Amount due: ");
  EXPECT_NE(plain, bold);
  EXPECT_EQ(bold, MeasureWidth(Times16Bold(), "Amount due: "));
  g->TextSize = 32;
  EXPECT_GT(g->StringWidth("Amount due: "), 1.5 * bold);

  const double widest = g->StringWidth("12 High Street");
  EXPECT_EQ(g->StringWidth(ThreeLines()), widest);
  EXPECT_EQ(g->StringWidth(""), 0);
}

TEST_F(GraphicsTest, StringHeightCountsLinesTimesTheLineHeight) {
  Job job;
  Ref<Graphics> g = job.Open();
  for (const char* font : {"times", "geneva"}) {
    for (bool bold : {false, true}) {
      g->TextFont = font;
      g->TextSize = 18;
      g->Bold = bold;
      const Integer one = g->StringHeight("Brown & Co", 500);
      EXPECT_GT(one, 0);
      EXPECT_EQ(g->StringHeight(ThreeLines(), 500), 3 * one) << font << bold;
      EXPECT_EQ(g->StringHeight(ThreeLines(), 0), 3 * one) << font << bold;
      EXPECT_EQ(one, static_cast<Integer>(LineHeight(g->State())));
    }
  }
}

TEST_F(GraphicsTest, LayoutBreaksAtChr13AndToleratesOtherLineEnds) {
  const FontState s = Times16Bold();
  const std::vector<std::string> three = {"Brown & Co", "12 High Street", "Leeds"};
  EXPECT_EQ(LayoutLines(s, ThreeLines(), 0), three);
  EXPECT_EQ(LayoutLines(s, "Brown & Co\n12 High Street\r\nLeeds", 0), three);
  const std::vector<std::string> trailing = {"Leeds", ""};
  EXPECT_EQ(LayoutLines(s, String("Leeds") + Chr(13), 0), trailing);
  EXPECT_EQ(LayoutLines(s, "", 0).size(), 1u);
}

TEST_F(GraphicsTest, WrappingBreaksAtBlanksWithinTheWidth) {
  const FontState s = Times16Bold();
  const double firstPair = MeasureWidth(s, "alpha beta");
  const double secondPair = MeasureWidth(s, "gamma delta");
  const int wrap = static_cast<int>(std::ceil(std::max(firstPair, secondPair)));
  ASSERT_GT(MeasureWidth(s, "alpha beta gamma"), wrap);
  const std::vector<std::string> expected = {"alpha beta", "gamma delta"};
  EXPECT_EQ(LayoutLines(s, "alpha beta gamma delta", wrap), expected);

  // Each paragraph wraps on its own.
  const std::vector<std::string> paragraphs = {"alpha beta", "gamma delta", "alpha"};
  EXPECT_EQ(LayoutLines(s, String("alpha beta gamma delta") + Chr(13) + "alpha", wrap), paragraphs);
}

TEST_F(GraphicsTest, AWordWiderThanTheWrapStandsAloneOnItsLine) {
  const FontState s = Times16Bold();
  const int wrap = static_cast<int>(std::ceil(MeasureWidth(s, "a b")));
  ASSERT_GT(MeasureWidth(s, "Supercalifragilistic"), wrap);
  const std::vector<std::string> expected = {"a b", "Supercalifragilistic", "c"};
  EXPECT_EQ(LayoutLines(s, "a b Supercalifragilistic c", wrap), expected);
}

// ---- Pictures

// Qt writes no GIF, so the test makes one: two colours, LZW with a clear code after every two
// pixels, which keeps every code three bits wide.
QByteArray TinyGif(int w, int h) {
  QByteArray gif("GIF89a");
  auto le16 = [&gif](int v) { gif.append(char(v & 0xFF)).append(char((v >> 8) & 0xFF)); };
  le16(w);
  le16(h);
  gif.append(char(0x80)).append(char(0)).append(char(0));  // a table of two colours
  gif.append("\x00\x00\xFF\xFF\xFF\xFF", 6);
  gif.append(char(0x2C));
  le16(0);
  le16(0);
  le16(w);
  le16(h);
  gif.append(char(0)).append(char(2));  // no local table; LZW codes start at two bits
  std::vector<int> codes;
  for (int i = 0; i < w * h; ++i) {
    if (i % 2 == 0) codes.push_back(4);  // clear
    codes.push_back((i / w) % 2);
  }
  codes.push_back(5);  // end
  QByteArray data;
  unsigned bits = 0, count = 0;
  for (int c : codes) {
    bits |= unsigned(c) << count;
    count += 3;
    while (count >= 8) {
      data.append(char(bits & 0xFF));
      bits >>= 8;
      count -= 8;
    }
  }
  if (count > 0) data.append(char(bits & 0xFF));
  for (int i = 0; i < data.size(); i += 255) {
    const QByteArray block = data.mid(i, 255);
    gif.append(char(block.size())).append(block);
  }
  gif.append(char(0)).append(char(0x3B));
  return gif;
}

class PictureTest : public GraphicsTest {
 protected:
  QTemporaryDir dir;
  std::string WriteImage(const char* name, int w, int h, const char* format) {
    const QString path = dir.filePath(name);
    if (std::string(format) == "GIF") {
      QFile file(path);
      EXPECT_TRUE(file.open(QIODevice::WriteOnly));
      file.write(TinyGif(w, h));
      return path.toStdString();
    }
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(Qt::blue);
    EXPECT_TRUE(image.save(path, format));
    return path.toStdString();
  }
};

TEST_F(PictureTest, DecodedPicturesHaveTheirNaturalSize) {
  for (const char* format : {"PNG", "BMP", "JPG", "TIFF", "GIF"}) {
    const std::string path = WriteImage((std::string("logo.") + format).c_str(), 120, 45, format);
    Ref<Picture> p = GetFolderItem(String(path))->OpenAsPicture();
    ASSERT_NE(p, nil) << format;
    EXPECT_EQ(p->Width(), 120) << format;
    EXPECT_EQ(p->Height(), 45) << format;
  }
}

TEST_F(PictureTest, AFolderOrAFileThatIsNoPictureGivesNil) {
  EXPECT_EQ(GetFolderItem(String(dir.path().toStdString()))->OpenAsPicture(), nil);
  QFile text(dir.filePath("notes.png"));
  ASSERT_TRUE(text.open(QIODevice::WriteOnly));
  text.write("not an image at all");
  text.close();
  EXPECT_EQ(GetFolderItem(String(text.fileName().toStdString()))->OpenAsPicture(), nil);
  EXPECT_EQ(GetFolderItem(String(dir.filePath("missing.png").toStdString()))->OpenAsPicture(), nil);
}

TEST_F(PictureTest, DrawPictureRecordsTheNaturalSizeOrTheSizeAsked) {
  Ref<Picture> p = GetFolderItem(String(WriteImage("logo.png", 150, 60, "PNG")))->OpenAsPicture();
  ASSERT_NE(p, nil);
  Job job;
  Ref<Graphics> g = job.Open();
  g->DrawPicture(p, 410, 5, -10000, -10000, 0, 0, -10000, -10000);
  g->DrawPicture(p, 0, 0, 75, 30);
  const auto& ops = Ops(*g);
  ASSERT_EQ(ops.size(), 2u);
  EXPECT_EQ(ops[0].kind, DrawOp::PictureOp);
  EXPECT_EQ(ops[0].x, 410);
  EXPECT_EQ(ops[0].y, 5);
  EXPECT_EQ(ops[0].width, 150);
  EXPECT_EQ(ops[0].height, 60);
  EXPECT_EQ(ops[1].width, 75);
  EXPECT_EQ(ops[1].height, 30);
}

// ---- Page setups and the dialogs

TEST(PrinterSetupTest, ANewSetupHoldsTheDefaultPaperAndLandscapeTurnsIt) {
  PrinterSetup setup;
  EXPECT_EQ(setup.PageWidth(), 595);
  EXPECT_EQ(setup.PageHeight(), 842);
  EXPECT_GE(setup.PageWidth(), 576);  // A4 passes the invoice's paper check
  setup.Landscape = true;
  EXPECT_EQ(setup.PageWidth(), 842);
  EXPECT_EQ(setup.PageHeight(), 595);
}

TEST(PrinterSetupTest, TheDefaultPaperAppliesToSetupsMadeAfterIt) {
  PrinterSetup before;
  PrinterSetup::SetDefaultPaper(420, 595);  // A5
  PrinterSetup after;
  PrinterSetup::SetDefaultPaper(595, 842);
  EXPECT_EQ(before.PageWidth(), 595);
  EXPECT_EQ(after.PageWidth(), 420);
  EXPECT_EQ(after.PageHeight(), 595);
  EXPECT_LT(after.PageWidth(), 576);
}

TEST(PrinterSetupTest, SetupStringTellsThePaperAndTheOrientation) {
  PrinterSetup setup;
  const std::string portrait = setup.SetupString().Utf8();
  EXPECT_NE(portrait.find("595"), std::string::npos);
  EXPECT_NE(portrait.find("842"), std::string::npos);
  setup.Landscape = true;
  EXPECT_NE(setup.SetupString().Utf8(), portrait);
  setup.Landscape = false;
  EXPECT_EQ(setup.SetupString().Utf8(), portrait);
}

// A screen whose dialogs answer as the test says.
class PrintDialogsScreen : public Screen {
 public:
  bool confirm = true;
  std::optional<std::pair<double, double>> paperChosen;
  int printDialogs = 0;
  const PrinterSetup* setupSeen = nullptr;
  std::vector<std::vector<DrawOp>> pages;

  void MsgBox(const String&) override {}
  void Beep() override {}
  void ShowURL(const String&) override {}
  void Quit(Integer) override {}
  void UnhandledException(const RuntimeException&) override {}
  void RunModal(Window&) override {}
  Ref<FolderItem> OpenFileDialog(const String&) override { return nil; }
  std::optional<Integer> ContextualMenu(const std::vector<String>&) override {
    return std::nullopt;
  }
  std::unique_ptr<PageSurface> PrintDialog(const PrinterSetup* setup) override {
    ++printDialogs;
    setupSeen = setup;
    if (!confirm) return nullptr;
    return std::make_unique<RecordingSurface>(
        [this](const std::vector<DrawOp>& ops) { pages.push_back(ops); });
  }
  bool PageSetupDialog(PrinterSetup& setup) override {
    if (!confirm) return false;
    if (paperChosen) {
      setup.paperWidth = paperChosen->first;
      setup.paperHeight = paperChosen->second;
    }
    return true;
  }
};

class PrintDialogsTest : public GraphicsTest {
 protected:
  PrintDialogsScreen screen;
  void SetUp() override { SetScreen(&screen); }
  void TearDown() override { SetScreen(nullptr); }
};

TEST_F(PrintDialogsTest, ACancelledPrintDialogGivesNilAndPrintsNothing) {
  screen.confirm = false;
  Ref<PrinterSetup> setup = New<PrinterSetup>();
  Ref<Graphics> g = OpenPrinterDialog(setup, nullptr);
  EXPECT_EQ(g, nil);
  EXPECT_EQ(screen.printDialogs, 1);
  EXPECT_TRUE(screen.pages.empty());
}

TEST_F(PrintDialogsTest, AConfirmedPrintDialogGivesAJobOnThatSetupThatEndsWithTheGraphics) {
  Ref<PrinterSetup> setup = New<PrinterSetup>();
  {
    Ref<Graphics> g = OpenPrinterDialog(setup, nullptr);
    ASSERT_NE(g, nil);
    EXPECT_EQ(screen.setupSeen, setup.get());
    g->DrawString("Invoice to:", 20, 130);
    EXPECT_TRUE(screen.pages.empty());
  }
  ASSERT_EQ(screen.pages.size(), 1u);
  EXPECT_EQ(screen.pages[0].at(0).text, "Invoice to:");
}

TEST_F(PrintDialogsTest, WithNoSetupTheDialogGetsNone) {
  Ref<Graphics> g = OpenPrinterDialog(nil, nullptr);
  ASSERT_NE(g, nil);
  EXPECT_EQ(screen.setupSeen, nullptr);
}

TEST_F(PrintDialogsTest, PageSetupDialogTellsWhetherTheUserConfirmed) {
  screen.paperChosen = std::make_pair(420.0, 595.0);
  PrinterSetup chosen;
  EXPECT_TRUE(chosen.PageSetupDialog(nullptr));
  EXPECT_EQ(chosen.PageWidth(), 420);

  screen.confirm = false;
  PrinterSetup cancelled;
  EXPECT_FALSE(cancelled.PageSetupDialog(nullptr));
  EXPECT_EQ(cancelled.PageWidth(), PrinterSetup().PageWidth());
}

}  // namespace
