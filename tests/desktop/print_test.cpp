// SPDX-License-Identifier: GPL-3.0-or-later
// Printing through the system's print dialog: "print to file" gives a PDF that holds the invoice
// at its coordinates, one unit to the point, the paper's top left at 0, 0. The tests choose the
// file in the dialog, so that they print on no printer the system may have.
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include "DesktopFixture.h"
#include "PrintDialogs.h"
#include "invoice/iwindow.h"
#include "secondary/prefswindow.h"

namespace {

// The words of the first page with their boxes, in points from the top left (pdftotext -bbox).
QString Boxes(const QString& pdf) {
  QProcess p;
  p.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
  p.waitForFinished(20000);
  return QString::fromUtf8(p.readAllStandardOutput());
}

// A word drawn with its left end at x and its baseline at y: its box starts at x and its
// baseline lies between its top and bottom, nearer the bottom.
void ExpectAt(const QString& boxes, const QString& text, double x, double y) {
  const auto m = QRegularExpression(
                     QStringLiteral("<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"[0-9.]+\" "
                                    "yMax=\"([0-9.]+)\">%1</word>")
                         .arg(text))
                     .match(boxes);
  ASSERT_TRUE(m.hasMatch()) << text.toStdString();
  const double xMin = m.captured(1).toDouble(), yMin = m.captured(2).toDouble(),
               yMax = m.captured(3).toDouble();
  EXPECT_NEAR(xMin, x, 1.5) << text.toStdString();
  EXPECT_LT(yMin, y) << text.toStdString();
  EXPECT_GT(yMax, y) << text.toStdString();
  EXPECT_LT(yMax - y, (y - yMin) / 2) << text.toStdString();
}

// Ink across a horizontal line of the page near (x, y), in pixels of full black at 150 dpi: about
// a line's width in pixels times its darkness.
double InkAcross(const QImage& page, double x, double y) {
  const double scale = 150.0 / 72.0;
  double ink = 0;
  for (int row = int((y - 3) * scale); row <= int((y + 3) * scale); ++row)
    ink += (255 - qGray(page.pixel(int(x * scale), row))) / 255.0;
  return ink;
}

using Printing = DesktopTest;

// A cancelled dialog prints nothing; "Print to File" gives the page at its points.
TEST_F(Printing,
       PrintToFileHoldsTheInvoiceAtItsCoordinatesWithRulesThatShowAndCancelPrintsNothing) {
  for (const char* tool : {"pdftotext", "pdftoppm"})
    if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
      GTEST_SKIP() << tool << " is not installed";
  StartProgram();
  prefswindow->mybusinessname->setText("Arle");
  iwindow->invoicenumberField->setText("00042");
  const QString pdf = folder_.filePath(QStringLiteral("invoice.pdf"));
  WhenDialog([pdf](QWidget* dialog) {
    dialog->findChild<QLineEdit*>(QStringLiteral("filename"))->setText(pdf);
    static_cast<QDialog*>(dialog)->reject();
  });
  Key(iwindow->customername, Qt::Key_P, Qt::ControlModifier);
  ASSERT_FALSE(QFile::exists(pdf));

  // What a person does in the dialog to get a file: chooses "Print to File (PDF)", the last entry
  // of the printer list, whatever printer the system has, and names the file.
  WhenDialog([&](QWidget* dialog) {
    auto* printers = dialog->findChild<QComboBox*>(QStringLiteral("printers"));
    printers->setCurrentIndex(printers->count() - 1);
    dialog->findChild<QLineEdit*>(QStringLiteral("filename"))->setText(pdf);
    static_cast<QDialog*>(dialog)->accept();
  });
  Key(iwindow->customername, Qt::Key_P, Qt::ControlModifier);
  ASSERT_TRUE(QFile::exists(pdf));
  // A word of the letterhead and one of the head at their points: the scale and the origin.
  const QString boxes = Boxes(pdf);
  ExpectAt(boxes, QStringLiteral("Arle"), 20, 30);
  ExpectAt(boxes, QStringLiteral("00042"), 400, 255);

  // The black rule under the letterhead is a firm line at 150 dpi (half a point, about one pixel of
  // black), and the grey grid a light one.
  QProcess::execute(QStringLiteral("pdftoppm"),
                    {QStringLiteral("-r"), QStringLiteral("150"), QStringLiteral("-gray"),
                     QStringLiteral("-singlefile"), pdf, pdf});
  const QImage page(pdf + QStringLiteral(".pgm"));
  ASSERT_FALSE(page.isNull());
  const double rule = InkAcross(page, 300, 110), grid = InkAcross(page, 300, 300);
  EXPECT_GT(rule, 0.7);
  EXPECT_LT(rule, 1.6);
  EXPECT_GT(grid, 0.1);
  EXPECT_LT(grid, rule / 2);
}

TEST_F(Printing, TheLogoDialogOffersThePictureTypes) {
  const QString filter =
      desk::NameFilterFor("image/gif;image/jpeg;image/tiff;image/bmp;image/pict");
  for (const char* pattern : {"*.gif", "*.jpg", "*.jpeg", "*.tif", "*.tiff", "*.bmp", "*.pict"})
    EXPECT_TRUE(filter.contains(QLatin1String(pattern))) << pattern;
}

}  // namespace
