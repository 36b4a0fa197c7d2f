// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: a Picture holds a decoded QImage.
#pragma once

#include <QImage>
#include <string>

#include "rb/Graphics.h"

struct Picture::Impl {
  QImage image;
};

// Decodes a file's bytes with Qt's image readers (GIF, JPEG, PNG, BMP, TIFF, ...); nil for
// anything that is no picture.
Ref<Picture> DecodePicture(const std::string& bytes);
