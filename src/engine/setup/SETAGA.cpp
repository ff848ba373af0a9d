#include "SETAGA.h"

#include "MIX_AGA8.h"
#include "Message.h"
#include "SETUP.h"
#include "UTILITY.h"

namespace frigana {

void SETAGA(int& ierr, Text255& herr) {
    ierr = 1;
    message(herr, "[SETAGA error 1] the AGA8 model is not available", nullCharacter);
    ERRMSG(ierr, herr);
}

void UNSETAGA() {
    RESETA();
}

}  // namespace frigana
