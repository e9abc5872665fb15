// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_SHELLSUPPORT_H
#define CPRSESSION_SHELLSUPPORT_H

#include <CLI/App.hpp>

#include <string>

/// What a shell and man(1) know about the program, made from its own command line so that it
/// cannot fall behind it. The build writes these to files.
namespace ShellSupport {

std::string bashCompletion(const CLI::App &app);
std::string zshCompletion(const CLI::App &app);
std::string fishCompletion(const CLI::App &app);
std::string manPage(const CLI::App &app, const std::string &version);

} // namespace ShellSupport

#endif
