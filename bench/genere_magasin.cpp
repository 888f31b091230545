// Writes a realistic store for trying Vesko at scale (see magasin_realiste.h).
//
//   bench_genere_magasin N BASE [DOSSIER_DEMO]
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "bench/magasin_realiste.h"

int main(int argc, char** argv) {
  if (argc < 3 || std::atoi(argv[1]) < 1) {
    std::fprintf(stderr, "usage : bench_genere_magasin N BASE [DOSSIER_DEMO]\n");
    return 2;
  }
  try {
    const auto magasin =
        banc_essai::GenereMagasin(argc > 3 ? argv[3] : VESKO_DEMO_DIR, std::atoi(argv[1]), argv[2]);
    std::printf("%zu aidés (%s à %s) et %zu aidants (%s à %s), %.0f Mo de données, dans %s\n",
                magasin.aides.size(), magasin.aides.front().c_str(), magasin.aides.back().c_str(),
                magasin.aidants.size(), magasin.aidants.front().c_str(),
                magasin.aidants.back().c_str(), magasin.octets_donnees / 1e6, argv[2]);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "bench_genere_magasin : %s\n", e.what());
    return 1;
  }
  return 0;
}
