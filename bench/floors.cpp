// SPDX-License-Identifier: GPL-3.0-or-later
#include "floors.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <QFont>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPen>
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace bench {

namespace {

std::vector<std::string> ListFolder(const std::string& path) {
  std::vector<std::string> names;
  if (DIR* dir = ::opendir(path.c_str())) {
    while (const dirent* e = ::readdir(dir)) {
      if (e->d_name[0] != '.') names.emplace_back(e->d_name);
    }
    ::closedir(dir);
  }
  std::sort(names.begin(), names.end());
  return names;
}

// Put in place whole, as the program puts its files: a temporary file beside the name, synced,
// renamed over it, and the folder synced.
void WriteFile(const std::string& path, const std::string& bytes) {
  const std::string folder = path.substr(0, path.rfind('/'));
  const std::string temp = folder + "/.floor-temp";
  const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (fd < 0) return;
  const bool written = ::write(fd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()) && ::fsync(fd) == 0;
  ::close(fd);
  if (!written || ::rename(temp.c_str(), path.c_str()) != 0) return;
  const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir < 0) return;
  if (::fsync(dir) != 0) {
    // nothing to be done in a floor
  }
  ::close(dir);
}

void PString(std::string& out, const std::string& s) {
  const std::size_t n = std::min<std::size_t>(s.size(), 255);
  out.push_back(static_cast<char>(n));
  out.append(s, 0, n);
}

}  // namespace

void SaveFloor(const std::string& programFolder, const std::string& invoicename, const InvoiceFields& invoice,
               const std::string& prefsPath, const std::string& prefsBytes) {
  std::string bytes;
  bytes.reserve(512);
  for (std::size_t k = 0; k < invoice.strings.size(); ++k) {
    if (k == 46) {  // the discount stands between the status and the postage
      const auto bits = std::bit_cast<std::uint64_t>(invoice.discount);
      for (int i = 7; i >= 0; --i) bytes.push_back(static_cast<char>((bits >> (8 * i)) & 0xFF));
    }
    PString(bytes, invoice.strings[k]);
  }
  WriteFile(programFolder + "/customers/" + invoicename, bytes);
  volatile std::size_t seen = 0;
  seen = seen + ListFolder(programFolder + "/names").size();
  seen = seen + ListFolder(programFolder + "/names").size();
  seen = seen + ListFolder(programFolder + "/customers").size();
  WriteFile(programFolder + "/unpaid/" + invoicename, invoice.strings[42] + "\n");
  seen = seen + ListFolder(programFolder + "/unpaid").size();
  WriteFile(prefsPath, prefsBytes);
}

std::string LoadFloor(const std::string& path, const String& rate) {
  char buf[4096];
  ssize_t got = 0;
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd >= 0) {
    got = std::max<ssize_t>(0, ::read(fd, buf, sizeof buf));
    ::close(fd);
  }
  std::vector<String> fields;
  fields.reserve(49);
  std::size_t pos = 0;
  double discount = 0;
  for (int k = 0; k < 48; ++k) {
    if (k == 46 && pos + 8 <= static_cast<std::size_t>(got)) {
      std::uint64_t bits = 0;
      for (int i = 0; i < 8; ++i) bits = (bits << 8) | static_cast<unsigned char>(buf[pos + i]);
      discount = std::bit_cast<double>(bits);
      pos += 8;
    }
    std::size_t n = pos < static_cast<std::size_t>(got) ? static_cast<unsigned char>(buf[pos++]) : 0;
    n = std::min(n, static_cast<std::size_t>(got) - pos);
    fields.push_back(String::FromBytes(std::string(buf + pos, n)));
    pos += n;
  }
  fields.push_back(Str(discount));
  double sum = 0;
  for (int i = 0; i < 10; ++i) sum += Val(fields[2 + 4 * i + 3]);
  const String grand = Format(sum, "00.00");
  const String tax = Format(Val(grand) / 100.0 * Val(rate), "00.00");
  const double due = Val(grand) + Val(tax) + Val(fields[46]) - discount;
  return Format(due, "00.00").Utf8();
}

std::string KeyFloor(const String& quantity, const String& price, const std::vector<String>& totals,
                     const String& rate, const String& postage, const String& discount) {
  const String row = Format(Val(quantity) * Val(price), "00.00");
  double sum = 0;
  for (std::size_t k = 0; k < totals.size(); ++k) sum += Val(k == 0 ? row : totals[k]);
  const String grand = Format(sum, "00.00");
  const String tax = Format(Val(grand) / 100.0 * Val(rate), "00.00");
  const double due = ((Val(grand) + Val(tax)) + Val(postage)) - Val(discount);
  return Format(due, "00.00").Utf8();
}

void PrintFloor(const std::vector<DrawOp>& ops, const std::map<std::string, std::string>& families,
                const std::string& path, double widthPt, double heightPt) {
  QPdfWriter writer(QString::fromStdString(path));
  writer.setResolution(72);
  const QPageSize size(QSizeF(widthPt, heightPt), QPageSize::Point, QString(), QPageSize::ExactMatch);
  writer.setPageLayout(QPageLayout(size, QPageLayout::Portrait, QMarginsF(0, 0, 0, 0), QPageLayout::Point));
  QPainter painter(&writer);
  for (const DrawOp& op : ops) {
    const QColor colour(op.color.Red(), op.color.Green(), op.color.Blue());
    if (op.kind == DrawOp::Line) {
      QPen pen(colour);
      pen.setWidthF(1.0);
      pen.setCapStyle(Qt::SquareCap);
      painter.setPen(pen);
      painter.drawLine(QPointF(op.x, op.y), QPointF(op.x2, op.y2));
    } else if (op.kind == DrawOp::Text) {
      auto family = families.find(op.state.font);
      QFont font(QString::fromStdString(family == families.end() ? op.state.font : family->second));
      font.setPixelSize(std::max(1, static_cast<int>(op.state.size + 0.5)));
      font.setBold(op.state.bold);
      font.setItalic(op.state.italic);
      painter.setFont(font);
      painter.setPen(colour);
      QString text = QString::fromStdString(op.text);
      text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
      if (op.wrap > 0 || text.contains(QLatin1Char('\n'))) {
        const double ascent = QFontMetricsF(font).ascent();
        const double width = op.wrap > 0 ? op.wrap : widthPt;
        painter.drawText(QRectF(op.x, op.y - ascent, width, heightPt), Qt::TextWordWrap, text);
      } else {
        painter.drawText(QPointF(op.x, op.y), text);
      }
    }
  }
  painter.end();
}

}  // namespace bench
