#pragma once

/// Answers what the test has told it to answer, see Recording::ShortPathAnswer.
unsigned long GetShortPathNameA(const char* longPath, char* shortPath, unsigned long size);
