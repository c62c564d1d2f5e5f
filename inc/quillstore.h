// Everything public of the Quillstore type manager.
#ifndef QUILLSTORE_QUILLSTORE_H_
#define QUILLSTORE_QUILLSTORE_H_

#include "obblob.h"
#include "obboolean.h"
#include "obbs.h"
#include "obchar.h"
#include "obclassid.h"
#include "obdate.h"
#include "obdatetime.h"
#include "obdatetimen.h"
#include "obdefs.h"
#include "obhash.h"
#include "obi18n.h"
#include "obidxbounds.h"
#include "obint64.h"
#include "obistring.h"
#include "obkeycmp.h"
#include "oblocalref.h"
#include "obmbconv.h"
#include "obmodule.h"
#include "obnulty.h"
#include "obobjid.h"
#include "obref.h"
#include "obseal.h"
#include "obstrcmp.h"
#include "obstring.h"
#include "obstringiterator.h"
#include "obstrkey.h"
#include "obtypeconv.h"
#include "obtypemgr.h"

#endif  // QUILLSTORE_QUILLSTORE_H_
