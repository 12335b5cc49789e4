#include "platform/qt/help/HelpSeal.h"

#include <QCryptographicHash>
#include <QtGlobal>

namespace {

constexpr char compilersRemark[] = "This archive was not made by the MS HTML Help Workshop";
constexpr char sealStart[] = "Ninarix SHA-256 ";
constexpr qsizetype digestLength = 64;  // hexadecimal digits

// The digest of the whole file, its own place taken as blanks.
QByteArray DigestAround(const QByteArray& file, qsizetype place) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(QByteArrayView(file).first(place));
    hash.addData(QByteArray(digestLength, ' '));
    hash.addData(QByteArrayView(file).sliced(place + digestLength));
    return hash.result().toHex();
}

// Where the digest stands, or -1.
qsizetype PlaceOfDigest(const QByteArray& file) {
    const qsizetype start = file.indexOf(sealStart);
    if (start < 0) return -1;
    const qsizetype place = start + static_cast<qsizetype>(qstrlen(sealStart));
    return place + digestLength <= file.size() ? place : -1;
}

}  // namespace

bool HelpSeal::Put(QByteArray& file) {
    const qsizetype remark = file.indexOf(compilersRemark);
    if (remark < 0) return false;
    const QByteArray seal = sealStart + QByteArray(digestLength, ' ');
    if (remark + seal.size() > file.size()) return false;
    file.replace(remark, seal.size(), seal);
    const qsizetype place = PlaceOfDigest(file);
    file.replace(place, digestLength, DigestAround(file, place));
    return true;
}

bool HelpSeal::IsWhole(const QByteArray& file) {
    const qsizetype place = PlaceOfDigest(file);
    return place >= 0 && file.sliced(place, digestLength) == DigestAround(file, place);
}
