// Pictures: decoded once when opened, drawn at one point to the pixel.
#include <QFileInfo>
#include <QImageReader>
#include <QString>

#include "PictureImpl.h"

Picture::Picture(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}

Integer Picture::Width() const { return impl_ ? impl_->image.width() : 0; }

Integer Picture::Height() const { return impl_ ? impl_->image.height() : 0; }

Ref<Picture> DecodePicture(const std::string& nativePath) {
  const QString path = QString::fromStdString(nativePath);
  const QFileInfo info(path);
  if (!info.isFile()) return nil;
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  QImage image = reader.read();
  if (image.isNull()) return nil;
  auto impl = std::make_shared<Picture::Impl>();
  impl->image = std::move(image);
  return New<Picture>(std::move(impl));
}
