#pragma once

namespace Vantle::QtWrapper {

/// Registers the QML module com.corvaline.vantle.host 0.1: what the host tells
/// extensions that QML cannot find out cheaply, or at all. It holds a singleton
/// for each concern; each lives as long as the QML engine that asks for it.
///
/// Called once, ahead of the first extension.
void registerHostModule();

/// See setStandardExtensionEnabled(), which has the helpers of the module give
/// no answers.
bool isStandardExtensionEnabled();

} // namespace Vantle::QtWrapper
