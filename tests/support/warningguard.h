#pragma once

#include <QtCore/QString>

namespace VantleTest {

/// Makes every Qt warning a failure of the running test, unless it was
/// announced. Installed by the tests' main().
void installWarningGuard();

/// Lets the next warning that contains \p fragment pass. A test that ends
/// without having seen an announced warning fails.
void expectWarning(const QString &fragment);

} // namespace VantleTest
