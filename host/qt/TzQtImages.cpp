// SPDX-License-Identifier: Apache-2.0
#include "host/qt/TzQtImages.h"

#include <QPixmap>

namespace {

QPixmap ReadPixmap(std::string_view bytes, qreal density) {
  QPixmap pixmap;
  if (bytes.empty()) return pixmap;
  pixmap.loadFromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<uint>(bytes.size()), "PNG");
  pixmap.setDevicePixelRatio(density);
  return pixmap;
}

}  // namespace

QIcon MakeTzIcon(const kelpui::controls::UI_ImageData& image) {
  QIcon icon;
  if (const QPixmap single = ReadPixmap(image.bytes, 1.0); !single.isNull()) icon.addPixmap(single);
  if (const QPixmap twin = ReadPixmap(image.doubleSizeBytes, 2.0); !twin.isNull()) icon.addPixmap(twin);
  return icon;
}

QSize GetTzIconSize(const QIcon& icon) {
  // The sizes are in pixels of the files, and the single one is the smallest.
  QSize smallest;
  for (const QSize& size : icon.availableSizes()) {
    if (smallest.isEmpty() || size.width() < smallest.width()) smallest = size;
  }
  return smallest.isValid() ? smallest : QSize(0, 0);
}
