// frigana schema: the JSON schema of a request.
#include <iostream>
#include <memory>

#include "Commands.h"
#include "Schema.h"

namespace frigana::app {

using namespace catalogue;

Command addSchema(CLI::App& program) {
    CLI::App* line = program.add_subcommand("schema", "writes the JSON schema of a request");
    const auto name = std::make_shared<std::string>();
    line->add_option("NAME", *name, "name of a request, as listed by frigana explain")->required();
    return {line, [name] {
                const Request* request = findRequest(*name);
                if (request == nullptr)
                    return complain(usageError, *name + ": there is no such request; frigana explain lists them");
                std::cout << schemaOf(*request) << '\n';
                return 0;
            }};
}

}  // namespace frigana::app
