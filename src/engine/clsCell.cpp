// SPDX-License-Identifier: MIT
#include "engine/clsCell.h"

namespace {

std::uint16_t WithBit(std::uint16_t bits, int k, bool flag) {
    return static_cast<std::uint16_t>(flag ? bits | 1U << k : bits & ~(1U << k));
}

}  // namespace

void clsCell::Value(std::uint8_t value) {
    if (value != value_) modified_ = true;
    value_ = value;
    if (change_) change_(value);
}

void clsCell::Avail(int k, bool flag) {
    if (IsDigitIndex(k)) avail_ = WithBit(avail_, k, flag);
}

void clsCell::Inhib(int k, bool flag) {
    if (!IsDigitIndex(k) || Inhib(k) == flag) return;
    inhib_ = WithBit(inhib_, k, flag);
    modified_ = true;
}

void clsCell::Locked(bool flag) {
    if (locked_ != flag) modified_ = true;
    locked_ = flag;
}
