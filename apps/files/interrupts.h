// The end of the program by a signal.
#pragma once

#include <string_view>

namespace vistrel::app {

// From now on, SIGINT, SIGTERM and SIGHUP remove all temporary files and end the program with a
// message and 128 plus the signal's number. Exceeding a file size limit becomes an ordinary error.
void installSignalHandlers();

// What an interrupt says about the run besides that it was interrupted. For one thread at a time.
void setInterruptedText(std::string_view text);

}  // namespace vistrel::app
