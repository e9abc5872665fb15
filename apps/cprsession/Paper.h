// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_PAPER_H
#define CPRSESSION_PAPER_H

#include <QPageSize>

#include <string>
#include <vector>

/// The sizes of paper that can be asked for.
inline std::vector<std::string> paperNames()
{
    return {"A4", "Letter"};
}

/// One of them.
inline QPageSize::PageSizeId paperNamed(const std::string &name)
{
    return name == "Letter" ? QPageSize::Letter : QPageSize::A4;
}

#endif
