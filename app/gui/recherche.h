// The search of the persons list as staff type it: accents and case ignored,
// several words in any order, each found in the key, the name or the first
// name ("masson ines" finds "MASSON Inès").
#pragma once

#include <QSortFilterProxyModel>
#include <QStringList>

namespace hote {

// The text as the search compares it: lower case, accents removed.
QString SansAccents(const QString& texte);

class FiltreRecherche : public QSortFilterProxyModel {
 public:
  using QSortFilterProxyModel::QSortFilterProxyModel;
  // The rows whose columns, together, hold every word of texte.
  void Cherche(const QString& texte);

 protected:
  bool filterAcceptsRow(int ligne, const QModelIndex& parent) const override;

 private:
  QStringList mots_;
};

}  // namespace hote
