/* Frigana: refrigeration calculations. The C interface of libfrigana.
 *
 * A request is a text file with the extension .fi1; the answer is the text file of the same name with the extension
 * .fo1, left beside it. The result file is the only channel back: its first line is the type of the request, or 0 when
 * the request was refused, in which case a code and a text follow. When the request itself cannot be read (missing,
 * short or malformed), one line goes to standard error and no result file is written. The first run of line sizing
 * leaves its answer in .fo0, and a stored blend becomes a mixture file of the installation.
 *
 * A result takes its name when it is whole; an old one is removed when the run starts, and a run whose old result cannot
 * be removed is refused. Links are never followed for writing.
 *
 * The library keeps its state from call to call and runs one request at a time: calls of several threads queue. A call
 * needs 128 KiB of stack. Two processes may work in one folder: a run that needs scratch files there waits for the
 * other. Every call returns, whatever the request; signal handlers and floating-point environment are then the caller's
 * own again, and during the call a trap of another thread goes to the caller's handler. A host that leaves a call by a
 * jump calls again from the same thread, and that call cleans up; it must not call from a handler within a call.
 * docs/hosts.md tells how servers work with it.
 */
#ifndef FRIGANA_H
#define FRIGANA_H

#if defined(_WIN32)
/* The C calling convention: the caller removes the arguments. frigana.def names what the library exports. */
#define FRIGANA_API
#else
#define FRIGANA_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Runs one request.
 *   FILEIN          full path of the request file (backslashes, slashes or a mix); text behind ".fi1" is ignored
 *   ADDRESS         full path of a file in the installation folder, which holds the folders fluids and mixtures; only
 *                   the part up to the last separator counts
 *   FILEIN_LENGTH,  lengths of the two texts in characters; what lies beyond 255 is cut. The texts need no null
 *   ADDRESS_LENGTH  character at their end
 */
FRIGANA_API void Frigana(const char* FILEIN, const char* ADDRESS, int FILEIN_LENGTH, int ADDRESS_LENGTH);

/* Reads or writes a named item of the property engine, of the fluid that the last request set up.
 *   hvr        name of the item, up to its first null character; src/engine/setup/PASSCMN.h lists the names
 *   iwrite     1 writes, anything else reads
 *   icomp      component slot
 *   jcomp      second component of a pair
 *   hstr       text value, 255 characters
 *   ival       integer value
 *   rval       real value
 *   arr        array of 100 reals
 *   ierr       0, 1 for an unknown name, 2 for a slot out of bounds
 *   herr       its text, 255 characters
 *   hvrLength, hstrLength, herrLength
 *              lengths of hvr, hstr and herr in characters
 */
FRIGANA_API void PASSCMN(const char* hvr, const int* iwrite, const int* icomp, const int* jcomp, char* hstr, int* ival,
                         double* rval, double* arr, int* ierr, char* herr, int hvrLength, int hstrLength,
                         int herrLength);
/* The same under its decorated name. */
FRIGANA_API void passcmn_(const char* hvr, const int* iwrite, const int* icomp, const int* jcomp, char* hstr, int* ival,
                          double* rval, double* arr, int* ierr, char* herr, int hvrLength, int hstrLength,
                          int herrLength);

#ifdef __cplusplus
}
#endif

#endif
