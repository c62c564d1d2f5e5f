#include <cstdio>

#include "quillstore.h"

int main() {
  ___ObTypemgrContext(1);
  char id = 0;
  int32_t status = 0;
  const int a = 1, b = 2;
  const bool ok =
      ObTypeMgr::Name2ObTypeId("int", id) == 0 &&
      DefaultTypeMgr(nullptr)->Cmp(id, 0, &a, 0, &b, 0, 1, 8, status) < 0;
  ___ObTypemgrContext(0);
  std::puts(ok ? "consumer ok" : "consumer failed");
  return ok ? 0 : 1;
}
