#pragma once
// Texts the game flow shows in more than one place.

namespace ostrane::texts {

inline constexpr const char* kAbandon = "Voulez-vous abandonner la partie en cours ?   ";
inline constexpr const char* kQuitter = "        Quitter le programme ?";
inline constexpr const char* kArreter = "Arrêter la partie";
inline constexpr const char* kArreterTip = "Arrêter la partie en cours";
inline constexpr const char* kNouvelle = "Nouvelle partie";
inline constexpr const char* kNouvelleTip = "Commencer une partie de tablinor";
inline constexpr const char* kPasDeSolution = "Pas de solution possible.";
inline constexpr const char* kEntrezUnMot = "Entrez un mot dans la zone de texte.";
// Said once when the journal of the game in progress cannot be written.
inline constexpr const char* kJournalImpossible =
    "La partie en cours ne peut pas être enregistrée dans le dossier de démarrage (partie.ret) : elle ne sera "
    "pas protégée en cas d'arrêt brutal.";
// Said when the designed search would have kept more findings than it can.
inline constexpr const char* kTropDeSolutions = "Plus de 100 000 solutions : le meilleur coup exact est proposé.";

}  // namespace ostrane::texts
