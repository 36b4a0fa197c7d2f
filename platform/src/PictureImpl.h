// Inside the platform: a Picture holds a decoded QImage.
#pragma once

#include <QImage>
#include <string>

#include "rb/Graphics.h"

struct Picture::Impl {
  QImage image;
};

// Decodes the file with Qt's image readers (GIF, JPEG, PNG, BMP, TIFF, ...); nil for a folder or
// anything that is no picture.
Ref<Picture> DecodePicture(const std::string& nativePath);
