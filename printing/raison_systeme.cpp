#include "printing/raison_systeme.h"

#include <cerrno>

namespace printing {

std::string RaisonSysteme(int numero) {
  switch (numero) {
    case ENOSPC:
      return "le disque est plein";
    case EDQUOT:
      return "le quota de disque est atteint";
    case EFBIG:
      return "le fichier dépasse la taille permise";
    case EACCES:
    case EPERM:
      return "permission refusée";
    case EROFS:
      return "le disque est en lecture seule";
    case ENOENT:
      return "le dossier n'existe pas";
    case ENOTDIR:
      return "un élément du chemin n'est pas un dossier";
    case EIO:
      return "erreur d'entrée-sortie du disque";
    case EISDIR:
      return "c'est un dossier";
    case ENAMETOOLONG:
      return "le nom est trop long";
    case EMFILE:
    case ENFILE:
      return "trop de fichiers ouverts";
    case EPIPE:
      return "le lecteur a fermé le flux";
    case 0:
      return "écriture interrompue";
    case EXDEV:
      return "le fichier temporaire et la cible ne sont pas sur le même disque";
    default:
      return "erreur système " + std::to_string(numero);
  }
}

}  // namespace printing
