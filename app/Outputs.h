// What commands that run requests owe to the files around them: nothing is written over what is read or over another
// output, and whoever ends the program meets no half result.
#pragma once

#include <string>
#include <vector>

namespace frigana::app {

// The first output that would be written over an input or over another output, as a person reads it; empty if none
// would. Empty names do not count; "-" is standard output, which takes one of them.
std::string clashOf(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs);

// The files that a positional request writes or reads beside itself, or in the folder of the results.
std::vector<std::string> filesAround(const std::string& request, const std::string& outputFolder);

// SIGINT and SIGTERM from now on wait until the request that is being run has ended and cleared up behind itself; a
// second one ends the program at once.
void holdSignals();
// Whether one of them has come.
bool isInterrupted();
// Ends the program by the signal that was held, if one was; later ones end it at once.
void releaseSignals();

}  // namespace frigana::app
