// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/certificatekey.h>

#include <QtCore/QByteArray>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslKey>

namespace vt {

namespace {

constexpr char Sequence = 0x30;
constexpr char BitString = 0x03;

/// Takes the element of DER at the begin of \a bytes away from them. Its content; empty if it has not \a tag,
/// or is no element.
QByteArray TakeElement(char tag, QByteArray* bytes) {
    constexpr int LongForm = 0x80;
    constexpr int MaxLengthBytes = 3;
    if (bytes->size() < 2 || bytes->at(0) != tag) return QByteArray();
    int begin = 2;
    int length = static_cast<unsigned char>(bytes->at(1));
    if (length >= LongForm) {
        const int count = length - LongForm;
        begin += count;
        if (count > MaxLengthBytes || bytes->size() < begin) return QByteArray();
        length = 0;
        for (int i = 2; i < begin; ++i)
            length = (length << 8) | static_cast<unsigned char>(bytes->at(i));
    }
    if (length > bytes->size() - begin) return QByteArray();
    const QByteArray content = bytes->mid(begin, length);
    bytes->remove(0, begin + length);
    return content;
}

/// Of a public key, what its private key holds too: modulus and exponent, or where the point lies on its
/// axis, which is there whether points are written with both coordinates or with one.
QByteArray SharedPart(const QSslKey& publicKey) {
    QByteArray bytes = publicKey.toDer();
    QByteArray parts = TakeElement(Sequence, &bytes);
    TakeElement(Sequence, &parts);  // which algorithm
    QByteArray bits = TakeElement(BitString, &parts).mid(1);
    if (publicKey.algorithm() == QSsl::Rsa) return TakeElement(Sequence, &bits);
    constexpr char BothCoordinates = 0x04;
    const int coordinates = bits.startsWith(BothCoordinates) ? 2 : 1;
    return bits.mid(1, (bits.size() - 1) / coordinates);
}

}  // namespace

bool FitsCertificate(const QSslKey& key, const QSslCertificate& certificate) {
    const QSslKey publicKey = certificate.publicKey();
    const QByteArray shared = SharedPart(publicKey);
    return key.algorithm() == publicKey.algorithm() && !shared.isEmpty() && key.toDer().contains(shared);
}

}  // namespace vt
