// The names that the shared library shows to the world.
#include <algorithm>
#include <string_view>

#include "11_MainFrigana.h"
#include "PASSCMN.h"
#include "frigana.h"

namespace {

std::string_view textOf(const char* characters, int length) {
    if (characters == nullptr || length <= 0) return {};
    return {characters, static_cast<std::size_t>(length)};
}

// The caller's field takes the text, cut or padded with blanks.
void returnText(const frigana::Text255& text, char* characters, int length) {
    if (characters == nullptr || length <= 0) return;
    const int count = std::min(length, frigana::Text255::size);
    std::copy_n(text.data(), count, characters);
    std::fill_n(characters + count, length - count, ' ');
}

}  // namespace

extern "C" void Frigana(const char* FILEIN, const char* ADDRESS, int FILEIN_LENGTH, int ADDRESS_LENGTH) {
    frigana::runRequest(textOf(FILEIN, FILEIN_LENGTH), textOf(ADDRESS, ADDRESS_LENGTH));
}

extern "C" void PASSCMN(const char* hvr, const int* iwrite, const int* icomp, const int* jcomp, char* hstr, int* ival,
                        double* rval, double* arr, int* ierr, char* herr, int hvrLength, int hstrLength,
                        int herrLength) {
    frigana::Text255 text = textOf(hstr, hstrLength);
    frigana::Text255 message;
    double array[frigana::passedArraySize];
    std::copy_n(arr, frigana::passedArraySize, array);
    frigana::PASSCMN(textOf(hvr, hvrLength), *iwrite, *icomp, *jcomp, text, *ival, *rval, array, *ierr, message);
    std::copy_n(array, frigana::passedArraySize, arr);
    returnText(text, hstr, hstrLength);
    returnText(message, herr, herrLength);
}

extern "C" void passcmn_(const char* hvr, const int* iwrite, const int* icomp, const int* jcomp, char* hstr, int* ival,
                         double* rval, double* arr, int* ierr, char* herr, int hvrLength, int hstrLength,
                         int herrLength) {
    PASSCMN(hvr, iwrite, icomp, jcomp, hstr, ival, rval, arr, ierr, herr, hvrLength, hstrLength, herrLength);
}
