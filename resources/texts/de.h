// German, for Germany, Austria and Switzerland.

#define TEXT_INSTALL_1 "Auf Ihrem PC sind keine Druckertreiberdateien vorhanden. Wenn Sie den\n"
#define TEXT_INSTALL_2 "Druckertreiber über das Menü ""Mit Drucker verbinden..."" installiert haben,\n"
#define TEXT_INSTALL_3 "wurden nicht alle erforderlichen Dateien vom Druckserver kopiert.\n"
#define TEXT_INSTALL_4 "Installieren Sie den Druckertreiber bitte mit der Setup-Diskette neu.\n"
#define TEXT_INSTALL_5 "Dadurch werden die erforderlichen Dateien auf Ihren PC kopiert.\n"
#define TEXT_VERSION_1 "Dieser Druckertreiber ist nur für Windows NT(R) Version 3.51 bestimmt.\n"
#define TEXT_VERSION_2 "Auf der derzeit installierten Version von Windows NT(R)\n"
#define TEXT_VERSION_3 "kann der Treiber nicht ausgeführt werden.\n"

#define TEXT_MAIN_CAPTION "Haupteinstellungen"
#define TEXT_MAIN_MODE "Modus"
#define TEXT_MAIN_AUTOMATIC "A&utomatisch"
#define TEXT_MAIN_ADVANCED "&Erweitert"
#define TEXT_MAIN_MORE "&Weitere Optionen..."
#define TEXT_MAIN_SAVE "Einstellung s&peichern..."
#define TEXT_MAIN_MEDIA "Druck&medium"
#define TEXT_MAIN_INK "Tinte"
#define TEXT_MAIN_COLOR "&Farbe"
#define TEXT_MAIN_BLACK "S&chwarz"
#define TEXT_MAIN_CURRENT "Aktuelle Einstellungen"
#define TEXT_MAIN_ABOUT "Inf&o..."
#define MAIN_CURRENT_WIDTH 75

#define TEXT_PAPER_CAPTION "Papier"
#define TEXT_PAPER_SIZE "&Papierformat"
#define TEXT_PAPER_COPIES "Kopien"
#define TEXT_PAPER_COPIES_LABEL "A&nzahl"
#define TEXT_PAPER_ORIENTATION "Ausrichtung"
#define TEXT_PAPER_PORTRAIT "Hoch&format"
#define TEXT_PAPER_LANDSCAPE "&Querformat"
#define TEXT_PAPER_AREA "Druckbereich"
#define TEXT_PAPER_MAXIMUM "&Maximal"
#define TEXT_PAPER_CENTERED "&Zentriert"

#define TEXT_UTILITY_CAPTION "Dienstprogramme"
#define TEXT_UTILITY_NOZZLE_TITLE "Düsentest (J)"
#define TEXT_UTILITY_NOZZLE_KEY "&J"
#define TEXT_UTILITY_NOZZLE \
    "Verwenden Sie dieses Dienstprogramm, wenn der Ausdruck Lücken oder blasse Stellen aufweist."
#define TEXT_UTILITY_CLEANING_TITLE "Druckkopfreinigung (D)"
#define TEXT_UTILITY_CLEANING_KEY "&D"
#define TEXT_UTILITY_CLEANING \
    "Verwenden Sie dieses Dienstprogramm, wenn die Druckqualität nachlässt oder der Düsentest verstopfte Düsen anzeigt."
#define TEXT_UTILITY_ALIGNMENT_TITLE "Druckkopfausrichtung (Y)"
#define TEXT_UTILITY_ALIGNMENT_KEY "&Y"
#define TEXT_UTILITY_ALIGNMENT \
    "Verwenden Sie dieses Dienstprogramm, wenn senkrechte Linien im Ausdruck gegeneinander versetzt sind."
