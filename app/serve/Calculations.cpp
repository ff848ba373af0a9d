#include "Calculations.h"

#include <stdexcept>
#include <string_view>

namespace frigana::serve {

namespace {

std::string folderOfData;  // of the workers

std::string calculate(std::string_view task) {
    throw std::invalid_argument("there is no calculation " + std::string(task.substr(0, task.find('\n'))));
}

}  // namespace

workers::Calculation calculationWith(const std::string& installation) {
    folderOfData = installation;
    return calculate;
}

}  // namespace frigana::serve
