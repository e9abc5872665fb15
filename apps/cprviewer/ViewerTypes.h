// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_VIEWERTYPES_H
#define CPRVIEWER_VIEWERTYPES_H

/// Makes the pages, their types, style and translations known to the program. To be called before
/// the first page is loaded; may be called any number of times.
void useViewerTypes();

#endif
