// SPDX-License-Identifier: MIT
#pragma once

class ctrlCell;

// Lets assistive technology read the cells and play in them. For the whole program; further calls
// do nothing.
void InstallCellAccessibility();

// Tells assistive technology, when there is any, that the cell has another value.
void AnnounceCellChange(ctrlCell& cell);
