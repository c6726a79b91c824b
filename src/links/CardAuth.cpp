// The cards speak single-block triple DES with keys that are not checked for parity or weakness. OpenSSL 3
// calls these functions of its old interface deprecated; the newer one would bring a context and a provider
// for the same eight bytes. They are called in this file alone, so the warning is off here alone.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "links/CardAuth.h"

#include <QDebug>

#include <openssl/des.h>

namespace
{

constexpr int blockSize = int(sizeof(DES_cblock));
constexpr int keySize = 3 * blockSize;

// "PELORA620-WAXKEY", the key of the cards as delivered. A card issuer's own key goes here.
constexpr unsigned char issuedKey[16] = {0x50, 0x45, 0x4C, 0x4F, 0x52, 0x41, 0x36, 0x32,
                                         0x30, 0x2D, 0x57, 0x41, 0x58, 0x4B, 0x45, 0x59};

DES_key_schedule schedule(const QByteArray &key, int part)
{
    DES_cblock block;
    DES_key_schedule result;
    std::copy_n(key.constData() + part * blockSize, blockSize, block);
    DES_set_key_unchecked(&block, &result);
    return result;
}

} // namespace

QByteArray cardKey()
{
    return QByteArray(reinterpret_cast<const char *>(issuedKey), int(sizeof issuedKey));
}

QByteArray CPU3DESencrypt(const QByteArray &key, const QByteArray &data, int capacity)
{
    if (key.size() != blockSize && key.size() != 2 * blockSize) {
        qDebug("CPU3DESencrypt: invalid arguments\n");
        return {};
    }
    const int length = data.size() / blockSize * blockSize + blockSize;
    if (length > capacity) {
        qDebug("CPU3DESencrypt: destdata is too small\n");
        return {};
    }
    const QByteArray keys = key.leftJustified(keySize, '\0');
    DES_key_schedule first = schedule(keys, 0);
    DES_key_schedule second = schedule(keys, 1);
    DES_key_schedule third = schedule(keys, 0);
    QByteArray result = data.leftJustified(length, '\0');
    for (int at = 0; at < length; at += blockSize) {
        auto *block = reinterpret_cast<DES_cblock *>(result.data() + at);
        DES_ecb3_encrypt(block, block, &first, &second, &third, DES_ENCRYPT);
    }
    return result;
}
