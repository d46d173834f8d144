// Texts of buttons and of the help engine.
#include "platform/user/systext.h"

#include "platform/host.h"

namespace kvp
{

namespace
{
struct Language {
    WORD primary;
    const char *texts[static_cast<size_t>(SystemText::Count)];
};
} // namespace

// Buttons carry their letters where the language uses them. The first row is for all others.
static constexpr Language aLanguages[] = {
    {0x09,
     {"OK", "Cancel", "&Help", "&Abort", "&Retry", "&Ignore", "&Yes", "&No",
      "The help file cannot be found: ", "The help file has no topic about this."}},
    {0x07,
     {"OK", "Abbrechen", "&Hilfe", "&Beenden", "&Wiederholen", "&Ignorieren", "&Ja", "&Nein",
      "Die Hilfedatei wurde nicht gefunden: ", "Die Hilfedatei hat hierzu kein Thema."}},
    {0x0A,
     {"Aceptar", "Cancelar", "A&yuda", "&Anular", "&Reintentar", "&Omitir", "&Sí", "&No",
      "No se encuentra el archivo de ayuda: ",
      "El archivo de ayuda no contiene ningún tema sobre esto."}},
    {0x0C,
     {"OK", "Annuler", "Ai&de", "A&bandonner", "&Réessayer", "&Ignorer", "&Oui", "&Non",
      "Le fichier d'aide est introuvable : ",
      "Le fichier d'aide ne contient aucune rubrique à ce sujet."}},
    {0x10,
     {"OK", "Annulla", "&?", "&Interrompi", "&Riprova", "I&gnora", "&Sì", "&No",
      "Impossibile trovare il file della Guida: ",
      "Il file della Guida non contiene argomenti in proposito."}},
    {0x16,
     {"OK", "Cancelar", "A&juda", "&Anular", "&Repetir", "&Ignorar", "&Sim", "&Não",
      "O ficheiro de ajuda não foi encontrado: ",
      "O ficheiro de ajuda não tem nenhum tópico sobre isto."}},
    {0x11,
     {"OK", "キャンセル", "ヘルプ(&H)", "中止(&A)", "再試行(&R)", "無視(&I)", "はい(&Y)",
      "いいえ(&N)", "ヘルプ ファイルが見つかりません: ", "この項目についてのヘルプはありません。"}},
};

std::u16string TextOf(SystemText which)
{
    const Language *language = &aLanguages[0];
    for (const Language &row : aLanguages)
        if (row.primary == (CurrentMachine().wLang & 0x3FF))
            language = &row;
    return ToWide(language->texts[static_cast<size_t>(which)]);
}

} // namespace kvp
