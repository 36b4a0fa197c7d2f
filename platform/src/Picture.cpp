// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures: decoded once when opened, drawn at one point to the pixel.
#include <QBuffer>
#include <QByteArray>
#include <QImageReader>
#include <QString>

#include "PictureImpl.h"

Picture::Picture(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}

Integer Picture::Width() const { return impl_ ? impl_->image.width() : 0; }

Integer Picture::Height() const { return impl_ ? impl_->image.height() : 0; }

Ref<Picture> DecodePicture(const std::string& bytes) {
  QByteArray data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&data);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  QImage image = reader.read();
  if (image.isNull()) return nil;
  auto impl = std::make_shared<Picture::Impl>();
  impl->image = std::move(image);
  return New<Picture>(std::move(impl));
}
