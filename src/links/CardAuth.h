#pragma once
// What proves to a card that the machine is of its issuer's.

#include <QByteArray>

/// The key that the issuer wrote to every card: 16 bytes, two keys of the cipher.
QByteArray cardKey();

/// `data`, padded with zeros to one block of 8 bytes more than the whole ones in it, in triple DES with the
/// keys 1, 2, 1 of `key` (8 or 16 bytes). Empty, with a line on the debug output, when the key has another
/// length or the result is longer than `capacity`.
QByteArray CPU3DESencrypt(const QByteArray &key, const QByteArray &data, int capacity);
