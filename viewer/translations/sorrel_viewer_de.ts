<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Viewer::BrokenPage</name>
    <message>
        <source>&amp;Read again</source>
        <translation>&amp;Erneut lesen</translation>
    </message>
    <message>
        <source>Reads the file from its start.</source>
        <translation>Liest die Datei von Anfang an.</translation>
    </message>
    <message>
        <source>What is known in spite of it:</source>
        <translation>Was trotzdem bekannt ist:</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>This package is broken</source>
        <translation>Dieses Paket ist beschädigt</translation>
    </message>
    <message>
        <source>Reading this package ended early</source>
        <translation>Das Lesen dieses Pakets endete vorzeitig</translation>
    </message>
    <message>
        <source>File:</source>
        <translation>Datei:</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Label:</source>
        <translation>Bezeichnung:</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Version:</source>
        <translation>Version:</translation>
    </message>
    <message>
        <source>Signature:</source>
        <translation>Signatur:</translation>
    </message>
</context>
<context>
    <name>Viewer::CardModel</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weitere</numerusform><numerusform>und %n weitere</numerusform></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>badge and title</comment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>Viewer::CommandDialog</name>
    <message>
        <source>Install Command</source>
        <translation>Installationsbefehl</translation>
    </message>
    <message>
        <source>&amp;Command that installs a package; %f is the file:</source>
        <translation>&amp;Befehl, der ein Paket installiert; %f ist die Datei:</translation>
    </message>
    <message>
        <source>The command runs only after you agree to it for a package. No shell is involved. Arguments with spaces are in double quotes. Leave the line empty for no command.</source>
        <translation>Der Befehl läuft erst, wenn Sie ihm für ein Paket zustimmen. Eine Shell ist nicht beteiligt. Argumente mit Leerzeichen stehen in doppelten Anführungszeichen. Eine leere Zeile bedeutet: kein Befehl.</translation>
    </message>
    <message>
        <source>Install command</source>
        <translation>Installationsbefehl</translation>
    </message>
</context>
<context>
    <name>Viewer::Comparison</name>
    <message>
        <source>Reading %1…</source>
        <translation>%1 wird gelesen …</translation>
    </message>
    <message>
        <source>Compare or Open?</source>
        <translation>Vergleichen oder öffnen?</translation>
    </message>
    <message>
        <source>%1 is another file of the same package. Compare the two?</source>
        <translation>%1 ist eine andere Datei desselben Pakets. Beide vergleichen?</translation>
    </message>
    <message>
        <source>%1 is another package. Open it instead of this one?</source>
        <translation>%1 ist ein anderes Paket. Statt diesem öffnen?</translation>
    </message>
    <message>
        <source>&amp;Compare</source>
        <translation>&amp;Vergleichen</translation>
    </message>
    <message>
        <source>&amp;Open Instead</source>
        <translation>Stattdessen ö&amp;ffnen</translation>
    </message>
</context>
<context>
    <name>Viewer::ComparisonPage</name>
    <message>
        <source>Comparison</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>Some parts were not compared, because a package exceeds a limit.</source>
        <translation>Einige Teile wurden nicht verglichen, weil ein Paket eine Grenze überschreitet.</translation>
    </message>
    <message>
        <source>The other package cannot be read: %1</source>
        <translation>Das andere Paket ist nicht lesbar: %1</translation>
    </message>
    <message>
        <source>Changes from this package to %1, version %2</source>
        <translation>Änderungen von diesem Paket zu %1, Version %2</translation>
    </message>
</context>
<context>
    <name>Viewer::ContentsPage</name>
    <message>
        <source>Show the folder above (Backspace)</source>
        <translation>Ordner darüber zeigen (Rücktaste)</translation>
    </message>
    <message>
        <source>Show the folder above</source>
        <translation>Ordner darüber zeigen</translation>
    </message>
    <message>
        <source>Members of the package</source>
        <translation>Dateien des Pakets</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Members that are not shown: %1</source>
        <translation>Nicht gezeigte Dateien: %1</translation>
    </message>
    <message>
        <source>This package has no members.</source>
        <translation>Dieses Paket hat keine Dateien.</translation>
    </message>
    <message>
        <source>The package</source>
        <translation>Das Paket</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>member and facts</comment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>Viewer::CopyAction</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
</context>
<context>
    <name>Viewer::DiffCards</name>
    <message>
        <source>Features</source>
        <translation>Merkmale</translation>
    </message>
    <message>
        <source>Launchers</source>
        <translation>Starter</translation>
    </message>
    <message>
        <source>Names of the application</source>
        <translation>Namen der Anwendung</translation>
    </message>
    <message>
        <source>All other languages</source>
        <translation>Alle anderen Sprachen</translation>
    </message>
    <message>
        <source>Native code for</source>
        <translation>Maschinencode für</translation>
    </message>
    <message>
        <source>Splits</source>
        <translation>Teilpakete</translation>
    </message>
    <message>
        <source>Signature schemes</source>
        <translation>Signaturverfahren</translation>
    </message>
    <message>
        <source>Signer</source>
        <translation>Unterzeichner</translation>
    </message>
    <message>
        <source>Signed by someone else: Android refuses this update</source>
        <translation>Von jemand anderem signiert: Android lehnt diese Aktualisierung ab</translation>
    </message>
    <message>
        <source>The signer is the same</source>
        <translation>Der Unterzeichner ist derselbe</translation>
    </message>
    <message>
        <source>The signer is the same, with a new key</source>
        <translation>Der Unterzeichner ist derselbe, mit einem neuen Schlüssel</translation>
    </message>
    <message>
        <source>The signer is the same, with an earlier key</source>
        <translation>Der Unterzeichner ist derselbe, mit einem früheren Schlüssel</translation>
    </message>
    <message>
        <source>The signers cannot be compared: the old package is not verified</source>
        <translation>Die Unterzeichner sind nicht vergleichbar: das alte Paket ist nicht verifiziert</translation>
    </message>
    <message>
        <source>Not verified: Android refuses the new package</source>
        <translation>Nicht verifiziert: Android lehnt das neue Paket ab</translation>
    </message>
    <message>
        <source>Another application: Android installs it beside the other one</source>
        <translation>Eine andere Anwendung: Android installiert sie neben der anderen</translation>
    </message>
    <message>
        <source>An older version: Android refuses this update</source>
        <translation>Eine ältere Version: Android lehnt diese Aktualisierung ab</translation>
    </message>
    <message>
        <source>The packages do not differ</source>
        <translation>Die Pakete unterscheiden sich nicht</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Anwendung</translation>
    </message>
    <message>
        <source>Package</source>
        <translation>Paket</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Lowest API level that it runs on</source>
        <translation>Niedrigste API-Stufe, auf der es läuft</translation>
    </message>
    <message>
        <source>API level that it was made for</source>
        <translation>API-Stufe, für die es gemacht ist</translation>
    </message>
    <message>
        <source>OpenGL ES</source>
        <translation>OpenGL ES</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1 → %2</source>
        <comment>before and after</comment>
        <translation>%1 → %2</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>Berechtigungen</translation>
    </message>
    <message>
        <source>Removed, dangerous</source>
        <translation>Entfernt, gefährlich</translation>
    </message>
    <message>
        <source>Added, dangerous</source>
        <translation>Hinzugefügt, gefährlich</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>Components</source>
        <translation>Komponenten</translation>
    </message>
    <message>
        <source>Open to other applications</source>
        <translation>Offen für andere Anwendungen</translation>
    </message>
    <message>
        <source>Sizes</source>
        <translation>Größen</translation>
    </message>
    <message>
        <source>%1 → %2, unpacked %3 → %4</source>
        <comment>sizes before and after</comment>
        <translation>%1 → %2, entpackt %3 → %4</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>split and path</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: %2 → %3</source>
        <comment>growth, size before and after</comment>
        <translation>%1: %2 → %3</translation>
    </message>
    <message>
        <source>The same files, in another order or with other bytes between them</source>
        <translation>Dieselben Dateien, in anderer Reihenfolge oder mit anderen Bytes dazwischen</translation>
    </message>
    <message>
        <source>Added</source>
        <translation>Hinzugefügt</translation>
    </message>
    <message>
        <source>Removed</source>
        <translation>Entfernt</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>version and its number</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>abgeschaltet</translation>
    </message>
    <message>
        <source>closed to other applications</source>
        <translation>geschlossen für andere Anwendungen</translation>
    </message>
    <message>
        <source>open to other applications without a permission</source>
        <translation>offen für andere Anwendungen ohne Berechtigung</translation>
    </message>
    <message>
        <source>open to other applications with the permission %1</source>
        <translation>offen für andere Anwendungen mit der Berechtigung %1</translation>
    </message>
    <message>
        <source>open to other applications with the permissions %1 to read and %2 to write</source>
        <translation>offen für andere Anwendungen mit den Berechtigungen %1 zum Lesen und %2 zum Schreiben</translation>
    </message>
    <message>
        <source>code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>resources</source>
        <translation>Ressourcen</translation>
    </message>
    <message>
        <source>native libraries</source>
        <translation>native Bibliotheken</translation>
    </message>
    <message>
        <source>assets</source>
        <translation>Assets</translation>
    </message>
    <message>
        <source>signatures</source>
        <translation>Signaturen</translation>
    </message>
    <message>
        <source>the file</source>
        <translation>die Datei</translation>
    </message>
    <message>
        <source>other</source>
        <translation>anderes</translation>
    </message>
    <message>
        <source>+%1</source>
        <comment>a size that grew</comment>
        <translation>+%1</translation>
    </message>
    <message>
        <source>-%1</source>
        <comment>a size that shrank</comment>
        <translation>-%1</translation>
    </message>
</context>
<context>
    <name>Viewer::DrawableDelegate</name>
    <message>
        <source>Drawing...</source>
        <translation>Wird gezeichnet …</translation>
    </message>
</context>
<context>
    <name>Viewer::DrawableStore</name>
    <message>
        <source>This drawable has no picture.</source>
        <translation>Dieses Drawable hat kein Bild.</translation>
    </message>
</context>
<context>
    <name>Viewer::FindingsPage</name>
    <message>
        <source>Errors</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Warnings</source>
        <translation>Warnungen</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Hinweise</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Findings</source>
        <translation>Befunde</translation>
    </message>
    <message>
        <source>No findings</source>
        <translation>Keine Befunde</translation>
    </message>
</context>
<context>
    <name>Viewer::HeadView</name>
    <message>
        <source>version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Set of packages</source>
        <translation>Satz von Paketen</translation>
    </message>
    <message>
        <source>Package</source>
        <translation>Paket</translation>
    </message>
    <message>
        <source>The package has no icon</source>
        <translation>Das Paket hat kein Symbol</translation>
    </message>
    <message>
        <source>Icon of the package</source>
        <translation>Symbol des Pakets</translation>
    </message>
    <message>
        <source>Opens a menu with shapes of the icon.</source>
        <translation>Öffnet ein Menü mit Formen des Symbols.</translation>
    </message>
    <message>
        <source>Shape of the icon</source>
        <translation>Form des Symbols</translation>
    </message>
</context>
<context>
    <name>Viewer::InstallCommand</name>
    <message>
        <source>No install command is set.</source>
        <translation>Kein Installationsbefehl ist eingestellt.</translation>
    </message>
    <message>
        <source>The command has no %f, which stands for the file.</source>
        <translation>Der Befehl hat kein %f, das für die Datei steht.</translation>
    </message>
    <message>
        <source>The name of the file has characters that no command can contain.</source>
        <translation>Der Name der Datei hat Zeichen, die kein Befehl enthalten kann.</translation>
    </message>
</context>
<context>
    <name>Viewer::InstallQuestion</name>
    <message>
        <source>Install a Package?</source>
        <translation>Ein Paket installieren?</translation>
    </message>
    <message>
        <source>Install “%1” (%2, version %3)?</source>
        <translation>„%1“ installieren (%2, Version %3)?</translation>
    </message>
    <message>
        <source>The signer chose this name. Nobody checked it.</source>
        <translation>Der Unterzeichner hat diesen Namen selbst gewählt. Niemand hat ihn geprüft.</translation>
    </message>
    <message>
        <source>This command runs: %1</source>
        <translation>Dieser Befehl läuft: %1</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>&amp;Installieren</translation>
    </message>
    <message>
        <source>Install it &amp;although it is not verified</source>
        <translation>&amp;Trotz fehlender Verifizierung installieren</translation>
    </message>
    <message>
        <source>Its permissions could not be read: %1</source>
        <translation>Seine Berechtigungen sind nicht lesbar: %1</translation>
    </message>
    <message>
        <source>It asks for no dangerous permissions.</source>
        <translation>Es verlangt keine gefährlichen Berechtigungen.</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weitere</numerusform><numerusform>und %n weitere</numerusform></translation>
    </message>
    <message>
        <source>Dangerous permissions</source>
        <translation>Gefährliche Berechtigungen</translation>
    </message>
    <message>
        <source>It asks for dangerous permissions (%1):</source>
        <translation>Es verlangt gefährliche Berechtigungen (%1):</translation>
    </message>
</context>
<context>
    <name>Viewer::InstallRun</name>
    <message>
        <source>Installing</source>
        <translation>Installation</translation>
    </message>
    <message>
        <source>Output of the command</source>
        <translation>Ausgabe des Befehls</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Anhalten</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>The command could not be started: %1</source>
        <translation>Der Befehl konnte nicht gestartet werden: %1</translation>
    </message>
    <message>
        <source>The command was ended before it was done.</source>
        <translation>Der Befehl wurde vorzeitig beendet.</translation>
    </message>
    <message>
        <source>The command succeeded, with exit code 0.</source>
        <translation>Der Befehl war erfolgreich, mit Exit-Code 0.</translation>
    </message>
    <message>
        <source>The command failed, with exit code %1.</source>
        <translation>Der Befehl ist gescheitert, mit Exit-Code %1.</translation>
    </message>
    <message>
        <source>Running: %1</source>
        <translation>Läuft: %1</translation>
    </message>
    <message>
        <source>More output is left out.</source>
        <translation>Weitere Ausgabe ist ausgelassen.</translation>
    </message>
    <message>
        <source>Install Command Ended</source>
        <translation>Installationsbefehl beendet</translation>
    </message>
</context>
<context>
    <name>Viewer::LanguagesPage</name>
    <message>
        <source>%1 (%2)</source>
        <comment>English and own name of a language</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Kürzel</translation>
    </message>
    <message>
        <source>Name of the application</source>
        <translation>Name der Anwendung</translation>
    </message>
    <message>
        <source>Languages</source>
        <translation>Sprachen</translation>
    </message>
    <message>
        <source>All other languages</source>
        <translation>Alle anderen Sprachen</translation>
    </message>
    <message>
        <source>Languages that are not shown: %1</source>
        <translation>Nicht gezeigte Sprachen: %1</translation>
    </message>
    <message>
        <source>This package has texts for no particular language.</source>
        <translation>Dieses Paket hat Texte für keine bestimmte Sprache.</translation>
    </message>
</context>
<context>
    <name>Viewer::LaunchersPage</name>
    <message>
        <source>Home screen</source>
        <translation>Startbildschirm</translation>
    </message>
    <message>
        <source>Television</source>
        <translation>Fernseher</translation>
    </message>
    <message>
        <source>Car</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Services for cars</source>
        <translation>Dienste für Autos</translation>
    </message>
    <message>
        <source>Watch faces</source>
        <translation>Zifferblätter</translation>
    </message>
    <message>
        <source>Replacements of the home screen</source>
        <translation>Ersatz für den Startbildschirm</translation>
    </message>
    <message>
        <source>Tiles of the quick settings</source>
        <translation>Kacheln der Schnelleinstellungen</translation>
    </message>
    <message>
        <source>Live wallpapers</source>
        <translation>Live-Hintergründe</translation>
    </message>
    <message>
        <source>Keyboards</source>
        <translation>Tastaturen</translation>
    </message>
    <message>
        <source>Screen savers</source>
        <translation>Bildschirmschoner</translation>
    </message>
    <message>
        <source>Widgets</source>
        <translation>Widgets</translation>
    </message>
    <message>
        <source>Share targets</source>
        <translation>Ziele zum Teilen</translation>
    </message>
    <message>
        <source>Direct share targets</source>
        <translation>Direkte Ziele zum Teilen</translation>
    </message>
    <message>
        <source>Instant applications</source>
        <translation>Instant-Anwendungen</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Verknüpfungen</translation>
    </message>
    <message>
        <source>Other entries</source>
        <translation>Andere Einträge</translation>
    </message>
    <message>
        <source>Launchers</source>
        <translation>Starter</translation>
    </message>
    <message>
        <source>Not shown</source>
        <translation>Nicht gezeigt</translation>
    </message>
    <message>
        <source>This package has no launchers.</source>
        <translation>Dieses Paket hat keine Starter.</translation>
    </message>
</context>
<context>
    <name>Viewer::ManifestPage</name>
    <message>
        <source>Manifest</source>
        <translation>Manifest</translation>
    </message>
    <message>
        <source>Characters that are not shown: %1</source>
        <translation>Nicht gezeigte Zeichen: %1</translation>
    </message>
    <message>
        <source>The manifest is empty.</source>
        <translation>Das Manifest ist leer.</translation>
    </message>
</context>
<context>
    <name>Viewer::MemberKind</name>
    <message>
        <source>code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>resources</source>
        <translation>Ressourcen</translation>
    </message>
    <message>
        <source>native libraries</source>
        <translation>native Bibliotheken</translation>
    </message>
    <message>
        <source>assets</source>
        <translation>Assets</translation>
    </message>
    <message>
        <source>META-INF</source>
        <translation>META-INF</translation>
    </message>
    <message>
        <source>other</source>
        <translation>anderes</translation>
    </message>
</context>
<context>
    <name>Viewer::MemberModel</name>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Packed</source>
        <translation>Gepackt</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Anteil</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
</context>
<context>
    <name>Viewer::MemberTree</name>
    <message>
        <source>the package</source>
        <translation>das Paket</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>%1, %2 packed, %3 of the package</source>
        <translation>%1, gepackt %2, %3 des Pakets</translation>
    </message>
    <message>
        <source>folder (files: %1)</source>
        <translation>Ordner (Dateien: %1)</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>Viewer::PackageFacts</name>
    <message>
        <source>%1 (%2)</source>
        <comment>name and number of a version</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>The package cannot be read.</source>
        <translation>Das Paket ist nicht lesbar.</translation>
    </message>
</context>
<context>
    <name>Viewer::PackageWindow</name>
    <message>
        <source>Android Packages</source>
        <translation>Android-Pakete</translation>
    </message>
    <message>
        <source>Drop a package here, or open one.</source>
        <translation>Ziehen Sie ein Paket hierher, oder öffnen Sie eines.</translation>
    </message>
    <message>
        <source>Open a Package</source>
        <translation>Paket öffnen</translation>
    </message>
    <message>
        <source>Compare With a Package</source>
        <translation>Mit einem Paket vergleichen</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Sorrel %1 shows Android packages before they are opened. A process of its own, within a sandbox, reads them.</source>
        <translation>Sorrel %1 zeigt Android-Pakete, bevor man sie öffnet. Ein eigener, abgeschotteter Prozess liest sie.</translation>
    </message>
    <message>
        <source>Reading the package…</source>
        <translation>Das Paket wird gelesen …</translation>
    </message>
    <message>
        <source>The package could not be read.</source>
        <translation>Das Paket konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The package is being read.</source>
        <translation>Das Paket wird gelesen.</translation>
    </message>
    <message>
        <source>The signer chose these names. Nobody checked them.</source>
        <translation>Der Unterzeichner hat diese Namen selbst gewählt. Niemand hat sie geprüft.</translation>
    </message>
    <message>
        <source>Signature</source>
        <translation>Signatur</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>The file changed since it was read, so it was not installed. It is read again.</source>
        <translation>Die Datei hat sich geändert, seit sie gelesen wurde. Sie wurde nicht installiert und wird neu gelesen.</translation>
    </message>
    <message>
        <source>Android packages (%1)</source>
        <translation>Android-Pakete (%1)</translation>
    </message>
    <message>
        <source>All files (%1)</source>
        <translation>Alle Dateien (%1)</translation>
    </message>
</context>
<context>
    <name>Viewer::Page</name>
    <message>
        <source>Reading...</source>
        <translation>Wird gelesen …</translation>
    </message>
</context>
<context>
    <name>Viewer::PagePanel</name>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
</context>
<context>
    <name>Viewer::PermissionsPage</name>
    <message>
        <source>Permissions</source>
        <translation>Berechtigungen</translation>
    </message>
    <message>
        <source>Dangerous</source>
        <translation>Gefährlich</translation>
    </message>
    <message>
        <source>May ask for</source>
        <translation>Darf fragen nach</translation>
    </message>
    <message>
        <source>Gets without asking</source>
        <translation>Bekommt ohne Nachfrage</translation>
    </message>
    <message>
        <source>This package asks for no permissions.</source>
        <translation>Dieses Paket verlangt keine Berechtigungen.</translation>
    </message>
</context>
<context>
    <name>Viewer::Reading</name>
    <message>
        <source>Reading the package took too long.</source>
        <translation>Das Lesen des Pakets dauerte zu lange.</translation>
    </message>
    <message>
        <source>The program that reads packages could not be started.</source>
        <translation>Das Programm, das Pakete liest, konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>The program that reads packages sent something unexpected, and was ended.</source>
        <translation>Das Programm, das Pakete liest, sandte etwas Unerwartetes und wurde beendet.</translation>
    </message>
    <message>
        <source>Reading the package took too much memory.</source>
        <translation>Das Lesen des Pakets brauchte zu viel Speicher.</translation>
    </message>
    <message>
        <source>The program that reads packages ended unexpectedly; the package may be made to harm it.</source>
        <translation>Das Programm, das Pakete liest, endete unerwartet; vielleicht soll das Paket ihm schaden.</translation>
    </message>
</context>
<context>
    <name>Viewer::ResourcesPage</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Text in the names and values to show</source>
        <translation>Text in den Namen und Werten, die gezeigt werden</translation>
    </message>
    <message>
        <source>Drawables</source>
        <translation>Drawables</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>Ressourcen</translation>
    </message>
    <message>
        <source>Resources that are not shown: %1</source>
        <translation>Nicht gezeigte Ressourcen: %1</translation>
    </message>
    <message>
        <source>This package has no resources.</source>
        <translation>Dieses Paket hat keine Ressourcen.</translation>
    </message>
    <message>
        <source>List (%1)</source>
        <translation>Liste (%1)</translation>
    </message>
    <message>
        <source>Gallery (%1)</source>
        <translation>Galerie (%1)</translation>
    </message>
</context>
<context>
    <name>Viewer::SearchBar</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Text to search for</source>
        <translation>Gesuchter Text</translation>
    </message>
    <message>
        <source>Previous match</source>
        <translation>Voriger Treffer</translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation>Voriger Treffer (Umschalt+F3)</translation>
    </message>
    <message>
        <source>Next match</source>
        <translation>Nächster Treffer</translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation>Nächster Treffer (F3)</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>%1 of more than %2</source>
        <translation>%1 von mehr als %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>Viewer::SignatureState</name>
    <message>
        <source>Certificate of %1, SHA-256 %2</source>
        <translation>Zertifikat von %1, SHA-256 %2</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between names of signers</comment>
        <translation>, </translation>
    </message>
    <message>
        <source>The signature is being read…</source>
        <translation>Die Signatur wird gelesen …</translation>
    </message>
    <message>
        <source>Verified</source>
        <translation>Verifiziert</translation>
    </message>
    <message>
        <source>Verified, signed by %1</source>
        <translation>Verifiziert, signiert von %1</translation>
    </message>
    <message>
        <source>Not verified</source>
        <translation>Nicht verifiziert</translation>
    </message>
    <message>
        <source>Not verified: %1</source>
        <translation>Nicht verifiziert: %1</translation>
    </message>
    <message>
        <source>The signature could not be read</source>
        <translation>Die Signatur ist nicht lesbar</translation>
    </message>
    <message>
        <source>The signature could not be read: %1</source>
        <translation>Die Signatur ist nicht lesbar: %1</translation>
    </message>
</context>
<context>
    <name>Viewer::TreemapView</name>
    <message>
        <source>Contents by size</source>
        <translation>Inhalt nach Größe</translation>
    </message>
</context>
<context>
    <name>Viewer::WindowActions</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>Co&amp;mpare With…</source>
        <translation>&amp;Vergleichen mit …</translation>
    </message>
    <message>
        <source>&amp;Install…</source>
        <translation>&amp;Installieren …</translation>
    </message>
    <message>
        <source>Install Comma&amp;nd…</source>
        <translation>Installations&amp;befehl …</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>B&amp;eenden</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Pages</source>
        <translation>&amp;Seiten</translation>
    </message>
    <message>
        <source>&amp;Shape of the Icon</source>
        <translation>&amp;Form des Symbols</translation>
    </message>
    <message>
        <source>&amp;Language of the Package</source>
        <translation>S&amp;prache des Pakets</translation>
    </message>
    <message>
        <source>Si&amp;gnature…</source>
        <translation>Si&amp;gnatur …</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;Keine</translation>
    </message>
    <message>
        <source>&amp;Circle</source>
        <translation>K&amp;reis</translation>
    </message>
    <message>
        <source>&amp;Rounded Square</source>
        <translation>&amp;Abgerundetes Quadrat</translation>
    </message>
    <message>
        <source>&amp;Squircle</source>
        <translation>S&amp;quircle</translation>
    </message>
    <message>
        <source>&amp;My Language</source>
        <translation>&amp;Meine Sprache</translation>
    </message>
</context>
</TS>
