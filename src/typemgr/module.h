// Process-wide state set up while the library loads. Internal.
#ifndef QUILLSTORE_SRC_TYPEMGR_MODULE_H_
#define QUILLSTORE_SRC_TYPEMGR_MODULE_H_

class ObString;
class ObTypeMgr;

// The text printers write for null values.
ObString& NullPrintText();
// Replaces the default manager without returning the previous one (the
// context switch deletes it first).
void ResetDefaultTypeMgr(ObTypeMgr* mgr);

#endif  // QUILLSTORE_SRC_TYPEMGR_MODULE_H_
