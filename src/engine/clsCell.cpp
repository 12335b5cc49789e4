#include "engine/clsCell.h"

#include <cstddef>

namespace {

bool IsDigitIndex(int k) {
    return k >= 1 && k <= 9;
}

std::size_t DigitSlot(int k) {
    return static_cast<std::size_t>(k - 1);
}

}  // namespace

void clsCell::Value(std::uint8_t value) {
    if (value != value_) modified_ = true;
    value_ = value;
    if (change_) change_(value);
}

bool clsCell::Avail(int k) const {
    return IsDigitIndex(k) && avail_[DigitSlot(k)];
}

void clsCell::Avail(int k, bool flag) {
    if (IsDigitIndex(k)) avail_[DigitSlot(k)] = flag;
}

bool clsCell::Inhib(int k) const {
    return IsDigitIndex(k) && inhib_[DigitSlot(k)];
}

void clsCell::Inhib(int k, bool flag) {
    if (!IsDigitIndex(k)) return;
    bool& stored = inhib_[DigitSlot(k)];
    if (stored != flag) modified_ = true;
    stored = flag;
}

void clsCell::Locked(bool flag) {
    if (locked_ != flag) modified_ = true;
    locked_ = flag;
}
