#pragma once

namespace Vantle::QtWrapper {

/// Makes the QML module "com.corvaline.vantle.host", version 0.1, known, by
/// which extensions ask what QML itself cannot tell cheaply. Further calls do
/// nothing. To be called before the first extension is loaded.
void registerHostModule();

} // namespace Vantle::QtWrapper
