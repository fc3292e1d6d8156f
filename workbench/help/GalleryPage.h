#pragma once

#include <QByteArray>

class ElementLibrary;

/// All element types on one page of Markdown, by library. `pictures` leads from the page to the
/// library's folder.
QByteArray galleryPage(const ElementLibrary& library, const QByteArray& pictures);
