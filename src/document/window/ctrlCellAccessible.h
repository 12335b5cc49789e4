#pragma once

class ctrlCell;

// Lets assistive technology read the cells. Installed once for the whole program; further calls do nothing.
void InstallCellAccessibility();

// Tells assistive technology, when there is any, that the cell shows something else.
void AnnounceCellChange(ctrlCell& cell);
