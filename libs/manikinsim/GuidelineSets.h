// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_GUIDELINESETS_H
#define MANIKINSIM_GUIDELINESETS_H

#include <chestboard/GuidelineValues.h>

namespace manikinsim {

/// Guideline sets as a manikin of each age has them. None of them carries the manikin's flag of the
/// set in use.
bls_2010::GuidelineValues_t adultGuidelines();
bls_2010::GuidelineValues_t childGuidelines();
bls_2010::GuidelineValues_t infantGuidelines();

} // namespace manikinsim

#endif
