#pragma once

#include "wrappers/qt/wrapperglobal.h"

namespace Vantle {
class Method;
}

/// The overloads of the interaction functions whose first argument is the name
/// of the object to act on. Each accessor gives the same overload at every
/// call; the overloads live as long as the process.
///
/// The letters in a name say what the overload takes: O the object, C the
/// coordinates inside it, B the button, M the modifiers, D in touchAndDrag
/// first the distance and then the delay, H how long the button is held, G the
/// gesture, T in dragAndDrop the name of the target, I, RC and T in scrollTo the
/// entry's index, row and column, and text. Where an overload takes both, the
/// modifiers come ahead of the button.
namespace Vantle::QtWrapper {

/// Makes the overloads known to the Inspector's global functions. Further
/// calls do nothing.
VANTLEQTWRAPPER_EXPORT void registerByNameFunctions();

VANTLEQTWRAPPER_EXPORT const Method *typeByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *typeTextByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *keyPressByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *keyReleaseByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mouseWheelByNameFn();
/// With the place where the content ends.
VANTLEQTWRAPPER_EXPORT const Method *mouseWheelToByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *scrollToOByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *scrollToOIByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *scrollToORCByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *scrollToOTByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *flickODByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *closeWindowByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *moveWindowByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *setWindowSizeByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *setWindowStateByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *gestureOGByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *mouseDragByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *longMouseDragByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *dragAndDropOTByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *dragAndDropOCTCByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *mouseClickOByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mouseClickOBMByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mouseClickOCBByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mouseClickOCBMByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *longMouseClickOByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *longMouseClickOBMByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *longMouseClickOCBByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *longMouseClickOCBMByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *longMouseClickOHByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *longMouseClickOCBMHByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *mouseMoveOByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mouseMoveByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *mousePressOByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mousePressOBMByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mousePressOCBByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mousePressOCBMByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *mouseReleaseOByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mouseReleaseOBMByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mouseReleaseOCBByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *mouseReleaseOCBMByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *doubleClickOByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *doubleClickOBMByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *doubleClickOCBByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *doubleClickOCBMByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *tapObjectOByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *tapObjectOMByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *tapObjectOCByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *tapObjectOCMByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *doubleTapOByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *doubleTapOMByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *doubleTapOCByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *doubleTapOCMByNameFn();

VANTLEQTWRAPPER_EXPORT const Method *touchAndDragOCDByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *touchAndDragOCDMByNameFn();
VANTLEQTWRAPPER_EXPORT const Method *touchAndDragOCDMDByNameFn();

} // namespace Vantle::QtWrapper
