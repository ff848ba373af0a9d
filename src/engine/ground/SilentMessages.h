// Suppresses the printing of messages.
#pragma once

#include "ModelTags.h"

namespace frigana {

// Nothing is printed while it lives: for inner calls whose failure is still to be rescued.
class SilentMessages {
  public:
    SilentMessages() : before_(modelTags.IPRINTERR) { modelTags.IPRINTERR = 0; }
    ~SilentMessages() { modelTags.IPRINTERR = before_; }
    SilentMessages(const SilentMessages&) = delete;
    SilentMessages& operator=(const SilentMessages&) = delete;

  private:
    int before_;
};

}  // namespace frigana
