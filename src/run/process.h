#pragma once

namespace Run {

// Makes the process fail softly: a reader that has gone, or a file beyond the size limit, becomes an error of
// the write instead of a signal, deep nesting gets the stack that it needs, and a standard stream that the
// caller closed can never be mistaken for a file that the program opens.
void prepareProcess();

// Threads that are started from here on get the stack that deep nesting needs, too.
void prepareThreads();

}  // namespace Run
