#pragma once

#include <string_view>

namespace frigana {

// The mixtures that come with the library beyond those of its table: files that no stored mixture may replace.
inline constexpr std::string_view furtherMixtures[] = {
    "R407G", "R407H", "R407I", "R410B", "R411A", "R411B", "R413A", "R415A", "R415B", "R417B", "R417C", "R418A",
    "R419A", "R419B", "R422E", "R423A", "R425A", "R429A", "R430A", "R431A", "R432A", "R433A", "R433B", "R433C",
    "R435A", "R436A", "R436B", "R439A", "R440A", "R441A", "R442A", "R443A", "R444A", "R444B", "R445A", "R446A",
    "R449A", "R449B", "R449C", "R451A", "R451B", "R452C", "R453A", "R454A", "R454C", "R456A", "R457A", "R459A",
    "R459B", "R460A", "R460B", "R463A", "R464A", "R465A", "R468A", "R469A", "R470A", "R470B", "R471A", "R472A",
    "R473A", "R501",  "R509A", "R510A", "R511A", "R512A", "R513A", "R513B", "R514A", "R516A",
};

}  // namespace frigana
