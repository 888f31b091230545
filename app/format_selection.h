// The rows of `vesko select` as text: tsv (the default), csv or json.
//
//   tsv   one row per line, fields separated by tabs, the values of a
//         multivalued field joined by "]"
//   csv   RFC 4180: fields separated by commas, rows ending in CRLF, a field
//         holding a comma, a double quote, CR or LF enclosed in double quotes
//         (its quotes doubled); multivalues joined by "]" as in tsv
//   json  an array of objects, one per row, each field under its name as
//         given in --fields ("0", "2", "NomPrenomAidantIncomp"); a
//         multivalued field is an array of its values
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "marbrel/liste_selection.h"

namespace vesko_app {

enum class FormatSelection { Tsv, Csv, Json };

// "tsv", "csv" or "json"; anything else throws UsageError.
FormatSelection FormatNomme(const std::string& nom);

void EcritSelection(const marbrel::Liste_Selection& liste, const std::vector<std::string>& champs,
                    FormatSelection format, std::ostream& sortie);

}  // namespace vesko_app
