#pragma once
// Tests whose expected "=XX" byte forms are those of one ANSI code page run with that code
// page set, and restore the machine's own afterwards.

#include "platform/Platform.h"

#include <gtest/gtest.h>

class AnsiCodePageScope {
public:
    explicit AnsiCodePageScope(unsigned codePage) : saved_(Platform::AnsiCodePage())
    {
        Platform::SetAnsiCodePage(codePage);
    }
    ~AnsiCodePageScope() { Platform::SetAnsiCodePage(saved_); }
    AnsiCodePageScope(const AnsiCodePageScope&) = delete;
    AnsiCodePageScope& operator=(const AnsiCodePageScope&) = delete;

private:
    unsigned saved_;
};

class Windows1252Test : public ::testing::Test {
private:
    AnsiCodePageScope codePage_{1252};
};
