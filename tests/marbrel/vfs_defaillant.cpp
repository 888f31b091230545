#include "tests/marbrel/vfs_defaillant.h"

#include <sqlite3.h>

#include <cstring>

namespace essai {

namespace {

sqlite3_vfs* reel = nullptr;
sqlite3_vfs enveloppe;
long seuil = 0;
long vus = 0;
bool echoue = false;

// Our file: the real one follows it in the same allocation.
struct Fichier {
  sqlite3_file base;
  sqlite3_file* Reel() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};
Fichier* F(sqlite3_file* f) { return reinterpret_cast<Fichier*>(f); }

bool Panne() {
  ++vus;
  if (seuil > 0 && vus >= seuil) {
    echoue = true;
    return true;
  }
  return false;
}

int Close(sqlite3_file* f) { return F(f)->Reel()->pMethods->xClose(F(f)->Reel()); }
int Read(sqlite3_file* f, void* p, int n, sqlite3_int64 o) {
  return F(f)->Reel()->pMethods->xRead(F(f)->Reel(), p, n, o);
}
int Write(sqlite3_file* f, const void* p, int n, sqlite3_int64 o) {
  if (Panne()) return SQLITE_FULL;
  return F(f)->Reel()->pMethods->xWrite(F(f)->Reel(), p, n, o);
}
int Truncate(sqlite3_file* f, sqlite3_int64 n) {
  return F(f)->Reel()->pMethods->xTruncate(F(f)->Reel(), n);
}
int Sync(sqlite3_file* f, int flags) {
  if (Panne()) return SQLITE_IOERR_FSYNC;
  return F(f)->Reel()->pMethods->xSync(F(f)->Reel(), flags);
}
int FileSize(sqlite3_file* f, sqlite3_int64* n) {
  return F(f)->Reel()->pMethods->xFileSize(F(f)->Reel(), n);
}
int Lock(sqlite3_file* f, int n) { return F(f)->Reel()->pMethods->xLock(F(f)->Reel(), n); }
int Unlock(sqlite3_file* f, int n) { return F(f)->Reel()->pMethods->xUnlock(F(f)->Reel(), n); }
int CheckReserved(sqlite3_file* f, int* n) {
  return F(f)->Reel()->pMethods->xCheckReservedLock(F(f)->Reel(), n);
}
int FileControl(sqlite3_file* f, int op, void* arg) {
  return F(f)->Reel()->pMethods->xFileControl(F(f)->Reel(), op, arg);
}
int SectorSize(sqlite3_file* f) { return F(f)->Reel()->pMethods->xSectorSize(F(f)->Reel()); }
int Device(sqlite3_file* f) { return F(f)->Reel()->pMethods->xDeviceCharacteristics(F(f)->Reel()); }
int ShmMap(sqlite3_file* f, int i, int n, int w, void volatile** p) {
  return F(f)->Reel()->pMethods->xShmMap(F(f)->Reel(), i, n, w, p);
}
int ShmLock(sqlite3_file* f, int o, int n, int flags) {
  return F(f)->Reel()->pMethods->xShmLock(F(f)->Reel(), o, n, flags);
}
void ShmBarrier(sqlite3_file* f) { F(f)->Reel()->pMethods->xShmBarrier(F(f)->Reel()); }
int ShmUnmap(sqlite3_file* f, int d) { return F(f)->Reel()->pMethods->xShmUnmap(F(f)->Reel(), d); }
int Fetch(sqlite3_file* f, sqlite3_int64 o, int n, void** p) {
  return F(f)->Reel()->pMethods->xFetch(F(f)->Reel(), o, n, p);
}
int Unfetch(sqlite3_file* f, sqlite3_int64 o, void* p) {
  return F(f)->Reel()->pMethods->xUnfetch(F(f)->Reel(), o, p);
}

const sqlite3_io_methods kMethodes = {3,           Close,      Read,   Write,  Truncate,
                                      Sync,        FileSize,   Lock,   Unlock, CheckReserved,
                                      FileControl, SectorSize, Device, ShmMap, ShmLock,
                                      ShmBarrier,  ShmUnmap,   Fetch,  Unfetch};

int Open(sqlite3_vfs*, sqlite3_filename nom, sqlite3_file* f, int flags, int* sortie) {
  Fichier* fichier = F(f);
  fichier->base.pMethods = nullptr;
  const int rc = reel->xOpen(reel, nom, fichier->Reel(), flags, sortie);
  // SQLite calls xClose only when pMethods is set: on failure it stays null.
  if (rc == SQLITE_OK && fichier->Reel()->pMethods) fichier->base.pMethods = &kMethodes;
  return rc;
}

}  // namespace

VfsDefaillant::VfsDefaillant() {
  reel = sqlite3_vfs_find(nullptr);
  enveloppe = *reel;
  enveloppe.zName = "vesko-defaillant";
  enveloppe.szOsFile = static_cast<int>(sizeof(Fichier)) + reel->szOsFile;
  enveloppe.xOpen = Open;
  enveloppe.pNext = nullptr;
  sqlite3_vfs_register(&enveloppe, 1);
  EchoueAu(0);
}

VfsDefaillant::~VfsDefaillant() {
  sqlite3_vfs_unregister(&enveloppe);
  sqlite3_vfs_register(reel, 1);
}

void VfsDefaillant::EchoueAu(long n) {
  seuil = n;
  vus = 0;
  echoue = false;
}
long VfsDefaillant::Vus() const { return vus; }
bool VfsDefaillant::AEchoue() const { return echoue; }

}  // namespace essai
