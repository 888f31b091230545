// A file system for SQLite that fails on purpose: wrapped around the real
// one, it counts every write and sync of every file of the store (the
// database, its log and its index) and makes the Nth fail, as a full disk or
// a failing disk would. Installed as SQLite's default while it lives.
#pragma once

namespace essai {

class VfsDefaillant {
 public:
  VfsDefaillant();
  ~VfsDefaillant();
  VfsDefaillant(const VfsDefaillant&) = delete;
  VfsDefaillant& operator=(const VfsDefaillant&) = delete;

  // The nth write or sync from now fails (writes as "disk full", syncs as an
  // I/O error), and so does every one after it; 0 disarms.
  void EchoueAu(long n);
  // Writes and syncs seen since the last EchoueAu.
  long Vus() const;
  bool AEchoue() const;
};

}  // namespace essai
