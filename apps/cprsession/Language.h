// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_LANGUAGE_H
#define CPRSESSION_LANGUAGE_H

#include <QString>

#include <string>
#include <vector>

/// In which language pictures and pages are written. What the program says to a shell is English.
namespace Language {

/// What can be asked for: en, de.
std::vector<std::string> all();
/// Makes \a language that of all texts from now on, and of numbers and dates. Needs an application.
void use(const std::string &language);

} // namespace Language

#endif
