// Printing through the system's print dialog: "print to file" gives a PDF that holds the invoice
// at its coordinates, one unit to the point, the paper's top left at 0, 0.
#include <QDialog>
#include <QFile>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include "DesktopFixture.h"
#include "PrintDialogs.h"
#include "invoice/iwindow.h"
#include "secondary/prefswindow.h"

namespace {

struct Word {
  QString text;
  double xMin, yMin, xMax, yMax;
};

// The words of the first page with their boxes, in points from the top left.
std::vector<Word> Words(const QString& pdf) {
  QProcess p;
  p.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
  p.waitForFinished(20000);
  const QString html = QString::fromUtf8(p.readAllStandardOutput());
  static const QRegularExpression word(
      QStringLiteral("<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" yMax=\"([0-9.]+)\">([^<]*)</word>"));
  std::vector<Word> words;
  for (auto it = word.globalMatch(html); it.hasNext();) {
    const auto m = it.next();
    words.push_back({m.captured(5), m.captured(1).toDouble(), m.captured(2).toDouble(), m.captured(3).toDouble(),
                     m.captured(4).toDouble()});
  }
  return words;
}

const Word* Find(const std::vector<Word>& words, const QString& text) {
  for (const Word& w : words)
    if (w.text == text) return &w;
  return nullptr;
}

// A word drawn with its left end at x and its baseline at y: its box starts at x and its
// baseline lies between its top and bottom, nearer the bottom.
void ExpectAt(const std::vector<Word>& words, const QString& text, double x, double y) {
  const Word* w = Find(words, text);
  ASSERT_NE(w, nullptr) << text.toStdString();
  EXPECT_NEAR(w->xMin, x, 1.5) << text.toStdString();
  EXPECT_LT(w->yMin, y) << text.toStdString();
  EXPECT_GT(w->yMax, y) << text.toStdString();
  EXPECT_LT(w->yMax - y, (y - w->yMin) / 2) << text.toStdString();
}

class Printing : public DesktopTest {
 protected:
  void TearDown() override {
    desk::SetPrinterHook(nullptr);
    DesktopTest::TearDown();
  }
};

TEST_F(Printing, PrintToFileHoldsTheInvoiceAtItsCoordinates) {
  if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
    GTEST_SKIP() << "pdftotext is not installed";
  StartProgram();
  prefswindow->mybusinessname->setText("Arle");
  iwindow->customername->setText("Smith");
  iwindow->invoicenumberField->setText("00042");

  const QString pdf = folder_.filePath(QStringLiteral("invoice.pdf"));
  desk::SetPrinterHook([pdf](QPrinter& printer) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
  });
  bool sawDialog = false;
  WhenDialog([&](QWidget* dialog) {
    sawDialog = true;
    static_cast<QDialog*>(dialog)->accept();
  });
  Key(iwindow->customername, Qt::Key_P, Qt::ControlModifier);
  ASSERT_TRUE(sawDialog);
  ASSERT_TRUE(QFile::exists(pdf));

  const std::vector<Word> words = Words(pdf);
  ExpectAt(words, QStringLiteral("Arle"), 20, 30);
  ExpectAt(words, QStringLiteral("Invoice"), 20, 130);
  ExpectAt(words, QStringLiteral("Smith"), 100, 130);
  ExpectAt(words, QStringLiteral("00042"), 400, 255);
  ExpectAt(words, QStringLiteral("number"), 20, 275);
  ExpectAt(words, QStringLiteral("description"), 200, 275);
}

TEST_F(Printing, ACancelledPrintDialogPrintsNothing) {
  StartProgram();
  const QString pdf = folder_.filePath(QStringLiteral("never.pdf"));
  desk::SetPrinterHook([pdf](QPrinter& printer) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
  });
  WhenDialog([](QWidget* dialog) { static_cast<QDialog*>(dialog)->reject(); });
  Key(iwindow->customername, Qt::Key_P, Qt::ControlModifier);
  EXPECT_FALSE(QFile::exists(pdf));
}

TEST_F(Printing, TheLogoDialogOffersThePictureTypes) {
  const QString filter = desk::NameFilterFor("image/gif;image/jpeg;image/tiff;image/bmp;image/pict");
  for (const char* pattern : {"*.gif", "*.jpg", "*.jpeg", "*.tif", "*.tiff", "*.bmp", "*.pict"})
    EXPECT_TRUE(filter.contains(QLatin1String(pattern))) << pattern;
}

}  // namespace
