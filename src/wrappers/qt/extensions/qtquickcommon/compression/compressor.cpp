#include "wrappers/qt/extensions/qtquickcommon/compression/compressor.h"

Compressor::~Compressor() = default;
