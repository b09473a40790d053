#pragma once

#include "wrappers/qt/bynamefunctions.h"

#include <array>

namespace Vantle::QtWrapper {

/// The functions that play a user's input back on an object of any kind. What
/// is done to windows, `flick` and `dragAndDrop` are not among them.
inline constexpr auto inputByNameFns = std::to_array<const Method *(*)()>({
    typeByNameFn,
    typeTextByNameFn,
    keyPressByNameFn,
    keyReleaseByNameFn,
    mouseWheelByNameFn,
    mouseWheelToByNameFn,
    scrollToOByNameFn,
    scrollToOIByNameFn,
    scrollToORCByNameFn,
    scrollToOTByNameFn,
    gestureOGByNameFn,
    mouseDragByNameFn,
    longMouseDragByNameFn,
    mouseClickOByNameFn,
    mouseClickOBMByNameFn,
    mouseClickOCBByNameFn,
    mouseClickOCBMByNameFn,
    longMouseClickOByNameFn,
    longMouseClickOBMByNameFn,
    longMouseClickOCBByNameFn,
    longMouseClickOCBMByNameFn,
    longMouseClickOHByNameFn,
    longMouseClickOCBMHByNameFn,
    mouseMoveOByNameFn,
    mouseMoveByNameFn,
    mousePressOByNameFn,
    mousePressOBMByNameFn,
    mousePressOCBByNameFn,
    mousePressOCBMByNameFn,
    mouseReleaseOByNameFn,
    mouseReleaseOBMByNameFn,
    mouseReleaseOCBByNameFn,
    mouseReleaseOCBMByNameFn,
    doubleClickOByNameFn,
    doubleClickOBMByNameFn,
    doubleClickOCBByNameFn,
    doubleClickOCBMByNameFn,
    tapObjectOByNameFn,
    tapObjectOMByNameFn,
    tapObjectOCByNameFn,
    tapObjectOCMByNameFn,
    doubleTapOByNameFn,
    doubleTapOMByNameFn,
    doubleTapOCByNameFn,
    doubleTapOCMByNameFn,
    touchAndDragOCDByNameFn,
    touchAndDragOCDMByNameFn,
    touchAndDragOCDMDByNameFn,
});

/// What is done to windows.
inline constexpr auto windowByNameFns = std::to_array<const Method *(*)()>({
    closeWindowByNameFn,
    moveWindowByNameFn,
    setWindowSizeByNameFn,
    setWindowStateByNameFn,
});

} // namespace Vantle::QtWrapper
