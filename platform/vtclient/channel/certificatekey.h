// SPDX-License-Identifier: Apache-2.0
#pragma once

class QSslCertificate;
class QSslKey;

namespace vt {

/// Whether \a key, a private one, is that of \a certificate. A key of elliptic curves that does not hold its
/// public part fits none: nobody can tell without the curve's arithmetic.
bool FitsCertificate(const QSslKey& key, const QSslCertificate& certificate);

}  // namespace vt
