// The rows of a study: one line of CSV or JSON for each case, and how a file of them is gone on with.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Answer.h"
#include "Study.h"

namespace frigana::studies {

// A case as JSON in one line: {"case": N, "inputs": [...], "values": [...]}, or "error" in place of the values.
std::string jsonRow(const Study& study, std::size_t number, const workers::Answer& answer);

// The same as a row of CSV: inputs, the place of the optimum, values, code and text of a refusal.
std::string csvHead(const Study& study);
std::string csvRow(const Study& study, std::size_t number, const workers::Answer& answer);

// Whether the case was refused, or its calculation did not come to its end.
bool isRefused(const workers::Answer& answer);

enum class RowForm { csv, json };

// The rows that a file of an interrupted study has whole.
//   Given     path  the file; one that is not there has none
//   Returned  rows  their number
//             size  of the file up to their end [bytes]
//             (value)  why the file is not one of this study; empty where it can be gone on with
std::string wholeRows(const Study& study, RowForm form, const std::string& path, std::size_t& rows, std::size_t& size);

// The size of a file up to the end of a number of rows behind its head [bytes].
std::size_t sizeOfRows(const std::string& path, std::size_t rows);

}  // namespace frigana::studies
