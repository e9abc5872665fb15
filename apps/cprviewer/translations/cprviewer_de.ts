<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AdvicePanel</name>
    <message>
        <source>Waiting for the first compression</source>
        <translation>Wartet auf die erste Kompression</translation>
    </message>
    <message>
        <source>Advice</source>
        <translation>Empfehlung</translation>
    </message>
    <message>
        <source>End session</source>
        <translation>Sitzung beenden</translation>
    </message>
    <message>
        <source>Look the session over</source>
        <translation>Sitzung auswerten</translation>
    </message>
    <message>
        <source>The session has ended.</source>
        <translation>Die Sitzung ist beendet.</translation>
    </message>
    <message>
        <source>Result: %1 %.</source>
        <translation>Ergebnis: %1 %.</translation>
    </message>
    <message>
        <source>Keep going.</source>
        <translation>Weiter so.</translation>
    </message>
    <message>
        <source>Waiting for the first ventilation</source>
        <translation>Warten auf die erste Beatmung</translation>
    </message>
</context>
<context>
    <name>AssignDialog</name>
    <message>
        <source>Who trains?</source>
        <translation>Wer übt?</translation>
    </message>
    <message>
        <source>%1 runs with %2. The learner is added to the session.</source>
        <translation>%1 läuft mit %2. Die Person kommt zur Sitzung hinzu.</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Class list</source>
        <translation>Kursliste</translation>
    </message>
    <message>
        <source>Assign</source>
        <translation>Zuweisen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ClassList</name>
    <message numerus="yes">
        <source>%n minute(s)</source>
        <translation>
            <numerusform>%n Minute</numerusform>
            <numerusform>%n Minuten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ClassListPage</name>
    <message>
        <source>Class list</source>
        <translation>Kursliste</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Als Nächstes</translation>
    </message>
    <message>
        <source>Nobody is on the class list. Type names, paste them from a spreadsheet or read a CSV file.</source>
        <translation>Die Kursliste ist leer. Namen eintippen, aus einer Tabelle einfügen oder eine CSV-Datei lesen.</translation>
    </message>
    <message>
        <source>The chosen learner is next (Enter)</source>
        <translation>Die gewählte Person kommt als Nächstes (Eingabe)</translation>
    </message>
    <message>
        <source>Correct…</source>
        <translation>Berichtigen…</translation>
    </message>
    <message>
        <source>Name, manikin and protocol of the chosen learner (F2)</source>
        <translation>Name, Puppe und Protokoll der gewählten Person (F2)</translation>
    </message>
    <message>
        <source>Move up (Ctrl+Up)</source>
        <translation>Nach oben (Strg+Auf)</translation>
    </message>
    <message>
        <source>Move down (Ctrl+Down)</source>
        <translation>Nach unten (Strg+Ab)</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Take the chosen learner from the list (Del)</source>
        <translation>Die gewählte Person aus der Liste nehmen (Entf)</translation>
    </message>
    <message>
        <source>Next learner</source>
        <translation>Nächste Person</translation>
    </message>
    <message>
        <source>Start session…</source>
        <translation>Sitzung beginnen…</translation>
    </message>
    <message>
        <source>Start the session of the next learner (Ctrl+N)</source>
        <translation>Die Sitzung der nächsten Person beginnen (Strg+N)</translation>
    </message>
    <message>
        <source>Minutes a session</source>
        <translation>Minuten je Sitzung</translation>
    </message>
    <message>
        <source>any</source>
        <translation>offen</translation>
    </message>
    <message>
        <source>Add learners: name, manikin, protocol</source>
        <translation>Lernende hinzufügen: Name, Puppe, Protokoll</translation>
    </message>
    <message>
        <source>Mira Holm; Manikin 1
Jörg Aldane; Manikin 2</source>
        <translation>Mira Holm; Puppe 1
Jörg Aldane; Puppe 2</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Add the typed learners</source>
        <translation>Die eingetippten Lernenden hinzufügen</translation>
    </message>
    <message>
        <source>Read CSV…</source>
        <translation>CSV lesen…</translation>
    </message>
    <message>
        <source>New day</source>
        <translation>Neuer Tag</translation>
    </message>
    <message>
        <source>The class begins today, with the first learner</source>
        <translation>Der Kurs beginnt heute, mit der ersten Person</translation>
    </message>
    <message>
        <source>Clear…</source>
        <translation>Leeren…</translation>
    </message>
    <message>
        <source>Take everybody from the class list?</source>
        <translation>Alle aus der Kursliste nehmen?</translation>
    </message>
    <message>
        <source>Stored sessions stay as they are.</source>
        <translation>Gespeicherte Sitzungen bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Sessions end after these minutes. The protocol is for simulated ones: a manikin has its own. A recording is played as it is.</source>
        <translation>Sitzungen enden nach dieser Zeit. Das Protokoll gilt für simulierte: Eine Puppe hat ihr eigenes. Eine Aufzeichnung läuft, wie sie ist.</translation>
    </message>
</context>
<context>
    <name>ClassPage</name>
    <message>
        <source>The class before (left arrow)</source>
        <translation>Der Kurs davor (Pfeil links)</translation>
    </message>
    <message>
        <source>Class list, since %1</source>
        <translation>Kursliste, seit %1</translation>
    </message>
    <message>
        <source>The class behind (right arrow)</source>
        <translation>Der Kurs danach (Pfeil rechts)</translation>
    </message>
    <message>
        <source>Class list</source>
        <translation>Kursliste</translation>
    </message>
    <message>
        <source>Reading sessions…</source>
        <translation>Sitzungen werden gelesen…</translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>Drucken…</translation>
    </message>
    <message>
        <source>Print the class, with a preview (Ctrl+P)</source>
        <translation>Den Kurs drucken, mit Vorschau (Strg+P)</translation>
    </message>
    <message>
        <source>PDF…</source>
        <translation>PDF…</translation>
    </message>
    <message>
        <source>The class as PDF</source>
        <translation>Der Kurs als PDF</translation>
    </message>
    <message>
        <source>Reports…</source>
        <translation>Berichte…</translation>
    </message>
    <message>
        <source>What to teach next</source>
        <translation>Was als Nächstes zu üben ist</translation>
    </message>
    <message>
        <source>No fault was found.</source>
        <translation>Kein Fehler gefunden.</translation>
    </message>
    <message>
        <source>%1 learners</source>
        <translation>%1 Lernenden</translation>
    </message>
    <message>
        <source>Learner, last session</source>
        <translation>Name, letzte Sitzung</translation>
    </message>
    <message>
        <source>Score</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Learners by figures</source>
        <translation>Lernende nach Werten</translation>
    </message>
    <message numerus="yes">
        <source>%n session(s)</source>
        <translation>
            <numerusform>%n Sitzung</numerusform>
            <numerusform>%n Sitzungen</numerusform>
        </translation>
    </message>
    <message>
        <source>passed</source>
        <translation>bestanden</translation>
    </message>
    <message>
        <source>not passed</source>
        <translation>nicht bestanden</translation>
    </message>
    <message>
        <source>Mean of the class</source>
        <translation>Mittel des Kurses</translation>
    </message>
    <message>
        <source>No session found.</source>
        <translation>Keine Sitzung gefunden.</translation>
    </message>
    <message>
        <source>&amp;Print in one job…</source>
        <translation>In einem Auftrag &amp;drucken…</translation>
    </message>
    <message>
        <source>As P&amp;DF into a folder…</source>
        <translation>Als &amp;PDF in einen Ordner…</translation>
    </message>
    <message>
        <source>Making reports: %1 of %2</source>
        <translation>Berichte werden erstellt: %1 von %2</translation>
    </message>
    <message>
        <source>A page to take home of each session</source>
        <translation>Von jeder Sitzung eine Seite zum Mitnehmen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Leave the other reports out</source>
        <translation>Die übrigen Berichte weglassen</translation>
    </message>
</context>
<context>
    <name>ClassRoom</name>
    <message>
        <source>Manikin %1</source>
        <translation>Puppe %1</translation>
    </message>
    <message>
        <source>There is no scenario &quot;%1&quot;.</source>
        <translation>Das Szenario „%1“ gibt es nicht.</translation>
    </message>
    <message numerus="yes">
        <source>There is room for %n manikin(s) at a time.</source>
        <translation>
            <numerusform>Es ist Platz für %n Puppe zugleich.</numerusform>
            <numerusform>Es ist Platz für %n Puppen zugleich.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 was not let in: %2</source>
        <translation>%1 wurde nicht angenommen: %2</translation>
    </message>
    <message>
        <source>%1: %2; it is tried again</source>
        <translation>%1: %2; es wird wieder versucht</translation>
    </message>
</context>
<context>
    <name>CompareChooser</name>
    <message>
        <source>Loading %1</source>
        <translation>%1 wird geladen</translation>
    </message>
    <message>
        <source>Compare with another session</source>
        <translation>Mit einer anderen Sitzung vergleichen</translation>
    </message>
    <message>
        <source>Of the same learner, before and after, or of another one. The session that is open stays as it is.</source>
        <translation>Desselben Lernenden, vorher und nachher, oder eines anderen. Die offene Sitzung bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>%1 % loaded</source>
        <translation>%1 % geladen</translation>
    </message>
    <message>
        <source>Choose session…</source>
        <translation>Sitzung wählen…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Recent files</source>
        <translation>Zuletzt geöffnet</translation>
    </message>
</context>
<context>
    <name>CompareHead</name>
    <message>
        <source>Date not known</source>
        <translation>Datum nicht bekannt</translation>
    </message>
</context>
<context>
    <name>CompareLane</name>
    <message>
        <source>%1 has not begun</source>
        <translation>%1 hat noch nicht begonnen</translation>
    </message>
    <message>
        <source>%1 still runs, so far %2</source>
        <translation>%1 läuft noch, bisher %2</translation>
    </message>
    <message>
        <source>%1 has ended, after %2</source>
        <translation>%1 ist zu Ende, nach %2</translation>
    </message>
</context>
<context>
    <name>CompareLine</name>
    <message>
        <source>%1: A %2, B %3</source>
        <translation>%1: A %2, B %3</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
</context>
<context>
    <name>ComparePage</name>
    <message>
        <source>Exchange A and B</source>
        <translation>A und B vertauschen</translation>
    </message>
    <message>
        <source>Another…</source>
        <translation>Andere…</translation>
    </message>
    <message>
        <source>Compare with another session</source>
        <translation>Mit einer anderen Sitzung vergleichen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>End the comparison</source>
        <translation>Vergleich beenden</translation>
    </message>
    <message>
        <source>Damaged; what could be read is shown.</source>
        <translation>Beschädigt; gezeigt wird, was zu lesen war.</translation>
    </message>
    <message>
        <source>Sessions and logs (*.zip *.cprlog *.journal)</source>
        <translation>Sitzungen und Aufzeichnungen (*.zip *.cprlog *.journal)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Export the comparison as a table or a picture</source>
        <translation>Den Vergleich als Tabelle oder Bild exportieren</translation>
    </message>
    <message>
        <source>&amp;Table…</source>
        <translation>&amp;Tabelle…</translation>
    </message>
    <message>
        <source>&amp;Picture…</source>
        <translation>&amp;Bild…</translation>
    </message>
</context>
<context>
    <name>ComparePanel</name>
    <message>
        <source>%1 ends</source>
        <translation>%1 endet</translation>
    </message>
    <message>
        <source>One above the other</source>
        <translation>Untereinander</translation>
    </message>
    <message>
        <source>Overlaid</source>
        <translation>Überlagert</translation>
    </message>
    <message>
        <source>From the start</source>
        <translation>Ab Beginn</translation>
    </message>
    <message>
        <source>From the first compression</source>
        <translation>Ab der ersten Kompression</translation>
    </message>
    <message>
        <source>Both sessions from %1 to %2, at %3</source>
        <translation>Beide Sitzungen von %1 bis %2, bei %3</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>A at %1, B at %2</source>
        <translation>A bei %1, B bei %2</translation>
    </message>
    <message>
        <source>Show more time (−)</source>
        <translation>Mehr Zeit zeigen (−)</translation>
    </message>
    <message>
        <source>Show less time (+)</source>
        <translation>Weniger Zeit zeigen (+)</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Show both sessions (F)</source>
        <translation>Beide Sitzungen ganz zeigen (F)</translation>
    </message>
</context>
<context>
    <name>CompareTable</name>
    <message>
        <source>Figures</source>
        <translation>Kennzahlen</translation>
    </message>
    <message>
        <source>Faults</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>A against B</source>
        <translation>A gegen B</translation>
    </message>
    <message>
        <source>Neither has a fault.</source>
        <translation>Keine hat einen Fehler.</translation>
    </message>
    <message>
        <source>Compressions and ventilations with the fault, by the guidelines of each session.</source>
        <translation>Kompressionen und Beatmungen mit dem Fehler, nach den Leitlinien jeder Sitzung.</translation>
    </message>
    <message>
        <source>The difference is A less B. ▲ A is better, ▼ A is worse.</source>
        <translation>Der Unterschied ist A minus B. ▲ A ist besser, ▼ A ist schlechter.</translation>
    </message>
    <message>
        <source>≠ The sessions went by different guidelines or protocols.</source>
        <translation>≠ Die Sitzungen folgen verschiedenen Leitlinien oder Protokollen.</translation>
    </message>
</context>
<context>
    <name>CycleRow</name>
    <message>
        <source>%1 of %2 right</source>
        <translation>%1 von %2 richtig</translation>
    </message>
    <message>
        <source>Wrong number</source>
        <translation>Falsche Zahl</translation>
    </message>
    <message numerus="yes">
        <source>%n breath(s)</source>
        <translation>
            <numerusform>%n Beatmung</numerusform>
            <numerusform>%n Beatmungen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DamageDialog</name>
    <message>
        <source>This was salvaged</source>
        <translation>Gerettete Sitzung</translation>
    </message>
    <message>
        <source>The file is damaged</source>
        <translation>Die Datei ist beschädigt</translation>
    </message>
    <message>
        <source>All of it is there.</source>
        <translation>Es ist alles da.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Salvage…</source>
        <translation>Retten…</translation>
    </message>
</context>
<context>
    <name>DepthPanel</name>
    <message>
        <source>Depth</source>
        <translation>Drucktiefe</translation>
    </message>
    <message>
        <source>Target %1–%2 mm</source>
        <translation>Ziel %1–%2 mm</translation>
    </message>
    <message>
        <source>%1 mm, %2, %3</source>
        <translation>%1 mm, %2, %3</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>Right depth</source>
        <translation>Richtige Tiefe</translation>
    </message>
    <message>
        <source>Too shallow</source>
        <translation>Zu flach</translation>
    </message>
    <message>
        <source>Too deep</source>
        <translation>Zu tief</translation>
    </message>
    <message>
        <source>Full release</source>
        <translation>Voll entlastet</translation>
    </message>
    <message>
        <source>%1 mm not released</source>
        <translation>Resttiefe %1 mm</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>noch keine</translation>
    </message>
</context>
<context>
    <name>EntryDialog</name>
    <message>
        <source>Learner of the class list</source>
        <translation>Person der Kursliste</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Manikin</source>
        <translation>Puppe</translation>
    </message>
    <message>
        <source>Any manikin</source>
        <translation>Beliebige Puppe</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Any protocol</source>
        <translation>Beliebiges Protokoll</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Übernehmen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>EventRow</name>
    <message>
        <source>right</source>
        <translation>richtig</translation>
    </message>
</context>
<context>
    <name>EventsPage</name>
    <message>
        <source>Compressions</source>
        <translation>Kompressionen</translation>
    </message>
    <message>
        <source>Ventilations</source>
        <translation>Beatmungen</translation>
    </message>
    <message>
        <source>Pauses</source>
        <translation>Pausen</translation>
    </message>
    <message>
        <source>AED and ECG</source>
        <translation>AED und EKG</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>Others</source>
        <translation>Übrige</translation>
    </message>
    <message numerus="yes">
        <source>%n event(s)</source>
        <translation>
            <numerusform>%n Ereignis</numerusform>
            <numerusform>%n Ereignisse</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose an event to see its parameters.</source>
        <translation>Ein Ereignis wählen, um seine Werte zu sehen.</translation>
    </message>
    <message>
        <source>Parameters of the event</source>
        <translation>Werte des Ereignisses</translation>
    </message>
    <message>
        <source>Faults only</source>
        <translation>Nur Fehler</translation>
    </message>
</context>
<context>
    <name>FaultsPage</name>
    <message>
        <source>Cycles</source>
        <translation>Zyklen</translation>
    </message>
    <message>
        <source>Runs of compressions</source>
        <translation>Kompressionsserien</translation>
    </message>
    <message>
        <source>Worst moments</source>
        <translation>Schlimmste Momente</translation>
    </message>
    <message>
        <source>Nothing stands out.</source>
        <translation>Nichts fällt auf.</translation>
    </message>
</context>
<context>
    <name>FileChooser</name>
    <message>
        <source>Save session</source>
        <translation>Sitzung speichern</translation>
    </message>
    <message>
        <source>Session (*.zip)</source>
        <translation>Sitzung (*.zip)</translation>
    </message>
    <message>
        <source>Export table</source>
        <translation>Tabelle exportieren</translation>
    </message>
    <message>
        <source>Table (*.csv)</source>
        <translation>Tabelle (*.csv)</translation>
    </message>
    <message>
        <source>Export picture</source>
        <translation>Bild exportieren</translation>
    </message>
    <message>
        <source>Picture (*.png *.svg *.pdf)</source>
        <translation>Bild (*.png *.svg *.pdf)</translation>
    </message>
    <message>
        <source>Open session or recorded log</source>
        <translation>Sitzung oder Aufzeichnung öffnen</translation>
    </message>
    <message>
        <source>Sessions and logs (*.zip *.cprlog *.journal)</source>
        <translation>Sitzungen und Aufzeichnungen (*.zip *.cprlog *.journal)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Replace the file that is there?</source>
        <translation>Vorhandene Datei ersetzen?</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>%1 is damaged. Of it this is all that the session has:
%2
The damaged file is kept beside it.</source>
        <translation>%1 ist beschädigt. Mehr als das enthält die Sitzung davon nicht:
%2
Die beschädigte Datei bleibt daneben erhalten.</translation>
    </message>
    <message>
        <source>Save report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>Report (*.pdf)</source>
        <translation>Bericht (*.pdf)</translation>
    </message>
    <message>
        <source>Save class</source>
        <translation>Kurs speichern</translation>
    </message>
    <message>
        <source>Class (*.pdf)</source>
        <translation>Kurs (*.pdf)</translation>
    </message>
    <message>
        <source>Folder for the reports</source>
        <translation>Ordner für die Berichte</translation>
    </message>
    <message>
        <source>Folder of the library</source>
        <translation>Ordner der Bibliothek</translation>
    </message>
    <message>
        <source>Read learners</source>
        <translation>Lernende lesen</translation>
    </message>
    <message>
        <source>Lists (*.csv *.tsv *.txt)</source>
        <translation>Listen (*.csv *.tsv *.txt)</translation>
    </message>
    <message>
        <source>Export comparison</source>
        <translation>Vergleich exportieren</translation>
    </message>
    <message>
        <source>%1 has reports of these sessions already.</source>
        <translation>%1 enthält schon Berichte von diesen Sitzungen.</translation>
    </message>
</context>
<context>
    <name>HeaderBar</name>
    <message>
        <source>Live</source>
        <translation>Live</translation>
    </message>
    <message>
        <source>Review</source>
        <translation>Auswertung</translation>
    </message>
    <message>
        <source>CPR sessions</source>
        <translation>Reanimationstraining</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>Not saved</source>
        <translation>Nicht gespeichert</translation>
    </message>
    <message>
        <source>Save…</source>
        <translation>Speichern…</translation>
    </message>
    <message>
        <source>Save the session (Ctrl+S)</source>
        <translation>Sitzung speichern (Strg+S)</translation>
    </message>
    <message>
        <source>Simulate…</source>
        <translation>Simulieren…</translation>
    </message>
    <message>
        <source>Start the simulated manikin (Ctrl+N)</source>
        <translation>Simulierte Übungspuppe starten (Strg+N)</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Öffnen…</translation>
    </message>
    <message>
        <source>Open a session or a recorded log (Ctrl+O)</source>
        <translation>Sitzung oder Aufzeichnung öffnen (Strg+O)</translation>
    </message>
    <message>
        <source>Menu (F10)</source>
        <translation>Menü (F10)</translation>
    </message>
    <message>
        <source>Replay</source>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Damaged</source>
        <translation>Beschädigt</translation>
    </message>
    <message>
        <source>Salvaged</source>
        <translation>Gerettet</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>What of the session is there</source>
        <translation>Was von der Sitzung da ist</translation>
    </message>
    <message>
        <source>Writing…</source>
        <translation>Wird geschrieben…</translation>
    </message>
    <message>
        <source>Salvaged in part</source>
        <translation>Teilweise gerettet</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Manikins</source>
        <translation>Puppen</translation>
    </message>
    <message>
        <source>Sound for the learner is on</source>
        <translation>Ton für die Lernenden ist eingeschaltet</translation>
    </message>
</context>
<context>
    <name>Histogram</name>
    <message>
        <source>%1: %2 % ≈ %3 of %4</source>
        <translation>%1: %2 % ≈ %3 von %4</translation>
    </message>
    <message>
        <source>%1: %2 %</source>
        <translation>%1: %2 %</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Shaded: target</source>
        <translation>Hinterlegt: Ziel</translation>
    </message>
</context>
<context>
    <name>KeysDialog</name>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Ctrl+O</source>
        <translation>Strg+O</translation>
    </message>
    <message>
        <source>Open a session or a recorded log</source>
        <translation>Sitzung oder Aufzeichnung öffnen</translation>
    </message>
    <message>
        <source>Ctrl+N</source>
        <translation>Strg+N</translation>
    </message>
    <message>
        <source>Start the simulated manikin</source>
        <translation>Simulierte Übungspuppe starten</translation>
    </message>
    <message>
        <source>Ctrl+S</source>
        <translation>Strg+S</translation>
    </message>
    <message>
        <source>Save the session</source>
        <translation>Sitzung speichern</translation>
    </message>
    <message>
        <source>Ctrl+1, Ctrl+2</source>
        <translation>Strg+1, Strg+2</translation>
    </message>
    <message>
        <source>Live, review</source>
        <translation>Live, Auswertung</translation>
    </message>
    <message>
        <source>F10</source>
        <translation>F10</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>F11</source>
        <translation>F11</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab, Umschalt+Tab</translation>
    </message>
    <message>
        <source>Next and previous element</source>
        <translation>Nächstes und voriges Element</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Play back and pause</source>
        <translation>Abspielen und anhalten</translation>
    </message>
    <message>
        <source>+, −, arrows</source>
        <translation>+, −, Pfeile</translation>
    </message>
    <message>
        <source>Zoom and move along the session</source>
        <translation>Zoomen und verschieben</translation>
    </message>
    <message>
        <source>F</source>
        <translation>F</translation>
    </message>
    <message>
        <source>Show the whole session</source>
        <translation>Ganze Sitzung zeigen</translation>
    </message>
    <message>
        <source>N, P</source>
        <translation>N, P</translation>
    </message>
    <message>
        <source>Next and previous event</source>
        <translation>Nächstes und voriges Ereignis</translation>
    </message>
    <message>
        <source>Home, End</source>
        <translation>Pos1, Ende</translation>
    </message>
    <message>
        <source>Begin and end of the session</source>
        <translation>Anfang und Ende der Sitzung</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Shift+N, Shift+P</source>
        <translation>Umschalt+N, Umschalt+P</translation>
    </message>
    <message>
        <source>Next and previous fault</source>
        <translation>Nächster und voriger Fehler</translation>
    </message>
    <message>
        <source>1 to 9</source>
        <translation>1 bis 9</translation>
    </message>
    <message>
        <source>Remark with one key; T shows which</source>
        <translation>Vermerk mit einer Taste; T zeigt, welche</translation>
    </message>
    <message>
        <source>T</source>
        <translation>T</translation>
    </message>
    <message>
        <source>Remark in your words</source>
        <translation>Vermerk in eigenen Worten</translation>
    </message>
    <message>
        <source>F2, Del</source>
        <translation>F2, Entf</translation>
    </message>
    <message>
        <source>Correct and remove the chosen remark</source>
        <translation>Gewählten Vermerk ändern und entfernen</translation>
    </message>
    <message>
        <source>Compare with another session</source>
        <translation>Mit einer anderen Sitzung vergleichen</translation>
    </message>
    <message>
        <source>O, Shift+arrows</source>
        <translation>O, Umschalt+Pfeile</translation>
    </message>
    <message>
        <source>Overlay two sessions, move the time by 1 s</source>
        <translation>Zwei Sitzungen überlagern, Zeit um 1 s verschieben</translation>
    </message>
    <message>
        <source>Ctrl+3, 4, 5</source>
        <translation>Strg+3, 4, 5</translation>
    </message>
    <message>
        <source>Library, class, class list</source>
        <translation>Bibliothek, Kurs, Kursliste</translation>
    </message>
    <message>
        <source>Ctrl+F, F5</source>
        <translation>Strg+F, F5</translation>
    </message>
    <message>
        <source>Search the library, read it again</source>
        <translation>In der Bibliothek suchen, sie neu lesen</translation>
    </message>
    <message>
        <source>Ctrl+R</source>
        <translation>Strg+R</translation>
    </message>
    <message>
        <source>Report to take home</source>
        <translation>Bericht zum Mitnehmen</translation>
    </message>
    <message>
        <source>Ctrl+6</source>
        <translation>Strg+6</translation>
    </message>
    <message>
        <source>Ctrl+7</source>
        <translation>Strg+7</translation>
    </message>
    <message>
        <source>Manikins: a class that trains at the same time</source>
        <translation>Puppen: ein Kurs, der gleichzeitig übt</translation>
    </message>
    <message>
        <source>1 to 9, Enter, Escape</source>
        <translation>1 bis 9, Eingabe, Esc</translation>
    </message>
    <message>
        <source>Open a manikin of the class, and go back</source>
        <translation>Eine Puppe des Kurses groß zeigen und zurück</translation>
    </message>
    <message>
        <source>S, E, L</source>
        <translation>S, E, L</translation>
    </message>
    <message>
        <source>Start, end, name the learner; Shift+S and Shift+E for all</source>
        <translation>Starten, beenden, Person nennen; Umschalt+S und Umschalt+E für alle</translation>
    </message>
    <message>
        <source>Ctrl+L, Ctrl+M</source>
        <translation>Strg+L, Strg+M</translation>
    </message>
    <message>
        <source>Learner&apos;s view, metronome on and off</source>
        <translation>Ansicht der Lernenden, Metronom ein und aus</translation>
    </message>
</context>
<context>
    <name>LearnerPage</name>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Back to the list (Esc)</source>
        <translation>Zurück zur Liste (Esc)</translation>
    </message>
    <message numerus="yes">
        <source>%n session(s)</source>
        <translation>
            <numerusform>%n Sitzung</numerusform>
            <numerusform>%n Sitzungen</numerusform>
        </translation>
    </message>
    <message>
        <source>Progress over the sessions</source>
        <translation>Fortschritt über die Sitzungen</translation>
    </message>
    <message>
        <source>Rename…</source>
        <translation>Umbenennen…</translation>
    </message>
    <message>
        <source>Correct the name in all sessions of the learner (F2)</source>
        <translation>Den Namen in allen Sitzungen korrigieren (F2)</translation>
    </message>
</context>
<context>
    <name>LearnerView</name>
    <message>
        <source>Keep going.</source>
        <translation>Weiter so.</translation>
    </message>
    <message>
        <source>Begin when you are ready.</source>
        <translation>Anfangen, sobald alles bereit ist.</translation>
    </message>
    <message>
        <source>Learner&apos;s view</source>
        <translation>Ansicht der Lernenden</translation>
    </message>
    <message>
        <source>Depth</source>
        <translation>Tiefe</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>Deeper</source>
        <translation>Tiefer</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>Gut</translation>
    </message>
    <message>
        <source>Less</source>
        <translation>Weniger</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Faster</source>
        <translation>Schneller</translation>
    </message>
    <message>
        <source>Slower</source>
        <translation>Langsamer</translation>
    </message>
    <message>
        <source>Ventilation</source>
        <translation>Beatmung</translation>
    </message>
    <message>
        <source>ml</source>
        <translation>ml</translation>
    </message>
    <message>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <source>Ventilation rate</source>
        <translation>Beatmungsfrequenz</translation>
    </message>
    <message>
        <source>Release</source>
        <translation>Entlastung</translation>
    </message>
    <message>
        <source>Complete</source>
        <translation>Ganz</translation>
    </message>
    <message>
        <source>Let go</source>
        <translation>Loslassen</translation>
    </message>
    <message>
        <source>Compressions</source>
        <translation>Kompressionen</translation>
    </message>
    <message>
        <source>Ventilations</source>
        <translation>Beatmungen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Your result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>The session has ended.</source>
        <translation>Die Sitzung ist beendet.</translation>
    </message>
    <message>
        <source>Ready for you</source>
        <translation>Alles bereit</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Thank you. Your instructor looks it over with you.</source>
        <translation>Danke. Nun wird die Sitzung gemeinsam angesehen.</translation>
    </message>
    <message>
        <source>As soon as a session begins you see here how you do.</source>
        <translation>Sobald eine Sitzung beginnt, ist hier zu sehen, wie es läuft.</translation>
    </message>
    <message>
        <source>No connection to the manikin.</source>
        <translation>Keine Verbindung zur Puppe.</translation>
    </message>
</context>
<context>
    <name>LearnerWindow</name>
    <message>
        <source>Learner&apos;s view</source>
        <translation>Ansicht der Lernenden</translation>
    </message>
</context>
<context>
    <name>LearnersDialog</name>
    <message>
        <source>Learners of the session</source>
        <translation>Lernende der Sitzung</translation>
    </message>
    <message>
        <source>One name a line. The session is saved anew with them.</source>
        <translation>Ein Name je Zeile. Die Sitzung wird mit ihnen neu gespeichert.</translation>
    </message>
    <message>
        <source>Correct</source>
        <translation>Berichtigen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>LearnersPage</name>
    <message>
        <source>Search learner</source>
        <translation>Lernende suchen</translation>
    </message>
    <message>
        <source>Learners</source>
        <translation>Lernende</translation>
    </message>
    <message numerus="yes">
        <source>%n session(s)</source>
        <translation>
            <numerusform>%n Sitzung</numerusform>
            <numerusform>%n Sitzungen</numerusform>
        </translation>
    </message>
    <message>
        <source>last %1</source>
        <translation>zuletzt %1</translation>
    </message>
    <message numerus="yes">
        <source>%n learner(s)</source>
        <translation>
            <numerusform>%n Lernende(r)</numerusform>
            <numerusform>%n Lernende</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>LeftList</name>
    <message>
        <source>Sessions that were not saved</source>
        <translation>Nicht gespeicherte Sitzungen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open the session of %1</source>
        <translation>Sitzung vom %1 öffnen</translation>
    </message>
    <message>
        <source>Save…</source>
        <translation>Speichern…</translation>
    </message>
    <message>
        <source>Save the session of %1</source>
        <translation>Sitzung vom %1 speichern</translation>
    </message>
    <message>
        <source>Throw away…</source>
        <translation>Verwerfen…</translation>
    </message>
    <message>
        <source>Throw the session of %1 away</source>
        <translation>Sitzung vom %1 verwerfen</translation>
    </message>
    <message>
        <source>It cannot be brought back then.</source>
        <translation>Sie lässt sich dann nicht wiederherstellen.</translation>
    </message>
    <message>
        <source>Throw the session away?</source>
        <translation>Sitzung verwerfen?</translation>
    </message>
    <message>
        <source>Throw away</source>
        <translation>Verwerfen</translation>
    </message>
</context>
<context>
    <name>LibraryPage</name>
    <message>
        <source>Sessions</source>
        <translation>Sitzungen</translation>
    </message>
    <message>
        <source>Learners</source>
        <translation>Lernende</translation>
    </message>
    <message>
        <source>Class</source>
        <translation>Kurs</translation>
    </message>
    <message>
        <source>Class list</source>
        <translation>Kursliste</translation>
    </message>
    <message>
        <source>Reading sessions: %1 of %2</source>
        <translation>Sitzungen werden gelesen: %1 von %2</translation>
    </message>
    <message>
        <source>Looking for sessions…</source>
        <translation>Sitzungen werden gesucht…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Stop reading sessions</source>
        <translation>Das Lesen der Sitzungen abbrechen</translation>
    </message>
    <message>
        <source>Look for sessions again (F5)</source>
        <translation>Noch einmal nach Sitzungen suchen (F5)</translation>
    </message>
    <message>
        <source>Folder…</source>
        <translation>Ordner…</translation>
    </message>
    <message>
        <source>Choose the folder of the library</source>
        <translation>Den Ordner der Bibliothek wählen</translation>
    </message>
    <message>
        <source>Choose the folder in which your sessions are stored. All archives in it and below it are listed; none is changed.</source>
        <translation>Wählen Sie den Ordner, in dem Ihre Sitzungen liegen. Alle Archive darin und darunter werden aufgelistet; keines wird geändert.</translation>
    </message>
    <message>
        <source>Choose folder…</source>
        <translation>Ordner wählen…</translation>
    </message>
    <message>
        <source>Correcting sessions: %1 of %2</source>
        <translation>Sitzungen werden korrigiert: %1 von %2</translation>
    </message>
    <message>
        <source>Leave the other sessions as they are</source>
        <translation>Die übrigen Sitzungen lassen, wie sie sind</translation>
    </message>
</context>
<context>
    <name>LivePage</name>
    <message>
        <source>Compressions in cycle</source>
        <translation>Kompressionen im Zyklus</translation>
    </message>
    <message>
        <source>Compressions</source>
        <translation>Kompressionen</translation>
    </message>
    <message>
        <source>of %1</source>
        <translation>von %1</translation>
    </message>
    <message>
        <source>Ventilations in cycle</source>
        <translation>Beatmungen im Zyklus</translation>
    </message>
    <message>
        <source>Ventilations</source>
        <translation>Beatmungen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>s</source>
        <translation>s</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Depth over the last 15 seconds</source>
        <translation>Drucktiefe der letzten 15 Sekunden</translation>
    </message>
    <message>
        <source>Live training</source>
        <translation>Live-Training</translation>
    </message>
    <message>
        <source>Ventilation rate</source>
        <translation>Beatmungsfrequenz</translation>
    </message>
    <message>
        <source>target %1–%2</source>
        <translation>Ziel %1–%2</translation>
    </message>
    <message>
        <source>AED</source>
        <translation>AED</translation>
    </message>
    <message>
        <source>Volume over the last 30 seconds</source>
        <translation>Volumen der letzten 30 Sekunden</translation>
    </message>
    <message>
        <source>%1 s missing</source>
        <translation>%1 s fehlen</translation>
    </message>
    <message>
        <source>Remark on this time (T)</source>
        <translation>Vermerk zu diesem Zeitpunkt (T)</translation>
    </message>
    <message>
        <source>Too many</source>
        <translation>Zu viele</translation>
    </message>
    <message>
        <source>Too slow</source>
        <translation>Zu langsam</translation>
    </message>
    <message>
        <source>Too fast</source>
        <translation>Zu schnell</translation>
    </message>
    <message>
        <source>Too long</source>
        <translation>Zu lang</translation>
    </message>
    <message>
        <source>AED pause</source>
        <translation>AED-Pause</translation>
    </message>
</context>
<context>
    <name>LivePanel</name>
    <message>
        <source>%1 (earlier)</source>
        <translation>%1 (vorhin)</translation>
    </message>
</context>
<context>
    <name>LoadingDialog</name>
    <message>
        <source>Loading %1</source>
        <translation>%1 wird geladen</translation>
    </message>
    <message>
        <source>%1 % loaded</source>
        <translation>%1 % geladen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>%1 – CPR sessions</source>
        <translation>%1 – Reanimationstraining</translation>
    </message>
    <message>
        <source>CPR sessions</source>
        <translation>Reanimationstraining</translation>
    </message>
    <message>
        <source>Save the session first?</source>
        <translation>Sitzung zuerst speichern?</translation>
    </message>
    <message>
        <source>%1 is not saved.</source>
        <translation>„%1“ ist nicht gespeichert.</translation>
    </message>
    <message>
        <source>Save…</source>
        <translation>Speichern…</translation>
    </message>
    <message>
        <source>Do not save</source>
        <translation>Nicht speichern</translation>
    </message>
    <message>
        <source>The session has ended.</source>
        <translation>Die Sitzung ist beendet.</translation>
    </message>
    <message>
        <source>Go on with it</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>%1 still runs, and would end now.</source>
        <translation>%1 läuft noch und würde jetzt beendet.</translation>
    </message>
    <message>
        <source>End the session?</source>
        <translation>Sitzung beenden?</translation>
    </message>
    <message>
        <source>You will see its results, and can still go on with it for a minute.</source>
        <translation>Die Ergebnisse werden angezeigt. Eine Minute lang kann die Sitzung noch fortgesetzt werden.</translation>
    </message>
    <message>
        <source>End session</source>
        <translation>Sitzung beenden</translation>
    </message>
    <message>
        <source>Salvage…</source>
        <translation>Retten…</translation>
    </message>
    <message numerus="yes">
        <source>%n session(s) were recorded, but not saved.</source>
        <translation>
            <numerusform>%n Sitzung wurde aufgezeichnet, aber nicht gespeichert.</numerusform>
            <numerusform>%n Sitzungen wurden aufgezeichnet, aber nicht gespeichert.</numerusform>
        </translation>
    </message>
    <message>
        <source>Show…</source>
        <translation>Anzeigen…</translation>
    </message>
    <message>
        <source>Sessions that were not saved</source>
        <translation>Nicht gespeicherte Sitzungen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Save in the library</source>
        <translation>In der Bibliothek speichern</translation>
    </message>
    <message>
        <source>End the class?</source>
        <translation>Den Kurs beenden?</translation>
    </message>
    <message numerus="yes">
        <source>%n session(s) still run. They end now and are saved in the library.</source>
        <translation>
            <numerusform>%n Sitzung läuft noch. Sie endet jetzt und kommt in die Bibliothek.</numerusform>
            <numerusform>%n Sitzungen laufen noch. Sie enden jetzt und kommen in die Bibliothek.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n session(s) still run. They end now, and the viewer offers to save them when it starts again.</source>
        <translation>
            <numerusform>%n Sitzung läuft noch. Sie endet jetzt und kann beim nächsten Start gespeichert werden.</numerusform>
            <numerusform>%n Sitzungen laufen noch. Sie enden jetzt und können beim nächsten Start gespeichert werden.</numerusform>
        </translation>
    </message>
    <message>
        <source>End all and close</source>
        <translation>Alle beenden und schließen</translation>
    </message>
</context>
<context>
    <name>ManikinTile</name>
    <message>
        <source>No learner</source>
        <translation>Niemand genannt</translation>
    </message>
    <message>
        <source>ready</source>
        <translation>bereit</translation>
    </message>
    <message>
        <source>manikin lost</source>
        <translation>Puppe verloren</translation>
    </message>
    <message>
        <source>silent</source>
        <translation>still</translation>
    </message>
    <message>
        <source>gone</source>
        <translation>weg</translation>
    </message>
    <message>
        <source>ended</source>
        <translation>beendet</translation>
    </message>
    <message>
        <source>is being saved</source>
        <translation>wird gespeichert</translation>
    </message>
    <message>
        <source>saved</source>
        <translation>gespeichert</translation>
    </message>
    <message>
        <source>not saved</source>
        <translation>nicht gespeichert</translation>
    </message>
    <message>
        <source>nothing recorded</source>
        <translation>nichts aufgezeichnet</translation>
    </message>
    <message>
        <source>%1 s missing</source>
        <translation>%1 s fehlen</translation>
    </message>
    <message numerus="yes">
        <source>%n packet(s) lost</source>
        <translation>
            <numerusform>%n Paket verloren</numerusform>
            <numerusform>%n Pakete verloren</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 ms delay</source>
        <translation>%1 ms Verzug</translation>
    </message>
    <message>
        <source>Starting…</source>
        <translation>Startet…</translation>
    </message>
    <message>
        <source>Ready to start</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>Manikin lost for %1 s</source>
        <translation>Puppe seit %1 s verloren</translation>
    </message>
    <message>
        <source>Silent for %1 s</source>
        <translation>Seit %1 s still</translation>
    </message>
    <message>
        <source>Link gone for %1 s</source>
        <translation>Verbindung seit %1 s weg</translation>
    </message>
    <message>
        <source>The session has ended.</source>
        <translation>Die Sitzung ist beendet.</translation>
    </message>
    <message>
        <source>Keep going.</source>
        <translation>Weiter so.</translation>
    </message>
    <message>
        <source>Waiting for the learner</source>
        <translation>Warten auf den Beginn</translation>
    </message>
    <message>
        <source>Result %1 %</source>
        <translation>Ergebnis %1 %</translation>
    </message>
    <message>
        <source>%1 % right</source>
        <translation>%1 % richtig</translation>
    </message>
    <message>
        <source>Cycle of %1:%2</source>
        <translation>Zyklus %1:%2</translation>
    </message>
    <message>
        <source>Compressions</source>
        <translation>Kompressionen</translation>
    </message>
    <message>
        <source>Ventilations</source>
        <translation>Beatmungen</translation>
    </message>
    <message>
        <source>Change rescuer</source>
        <translation>Helfer wechseln</translation>
    </message>
    <message>
        <source>Change rescuer soon</source>
        <translation>Gleich Helferwechsel</translation>
    </message>
    <message>
        <source>Help here first</source>
        <translation>Hier zuerst helfen</translation>
    </message>
    <message>
        <source>Pause %1 s</source>
        <translation>Pause %1 s</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Depth</source>
        <translation>Tiefe</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volumen</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>ml</source>
        <translation>ml</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Richtig</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>/min</source>
        <translation>/min</translation>
    </message>
    <message>
        <source>Release</source>
        <translation>Entlastung</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>AED</source>
        <translation>AED</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Nächste</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
</context>
<context>
    <name>MessageBar</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>MqttConnection</name>
    <message>
        <source>%1, which %2 names, cannot be read: %3</source>
        <translation>%1 (in %2 genannt) kann nicht gelesen werden: %3</translation>
    </message>
    <message>
        <source>%1 is another machine, and the way there has to be encrypted: name the file with the certificate of the broker&apos;s CA in CPRLINK_CA</source>
        <translation>%1 ist ein anderer Rechner, der Weg dorthin muss verschlüsselt sein: CPRLINK_CA muss die Datei mit dem Zertifikat der CA des Brokers nennen</translation>
    </message>
    <message>
        <source>CPRLINK_CERT needs CPRLINK_KEY and CPRLINK_CA, and CPRLINK_KEY needs both of them</source>
        <translation>CPRLINK_CERT braucht CPRLINK_KEY und CPRLINK_CA, CPRLINK_KEY braucht beide</translation>
    </message>
    <message>
        <source>the broker does not let this user read</source>
        <translation>der Broker lässt diesen Benutzer nicht lesen</translation>
    </message>
    <message>
        <source>the broker has closed the connection</source>
        <translation>der Broker hat die Verbindung geschlossen</translation>
    </message>
    <message>
        <source>the broker does not answer</source>
        <translation>der Broker antwortet nicht</translation>
    </message>
</context>
<context>
    <name>MqttTarget</name>
    <message>
        <source>the broker cannot be reached</source>
        <translation>der Broker ist nicht zu erreichen</translation>
    </message>
</context>
<context>
    <name>NameList</name>
    <message>
        <source> +%1</source>
        <translation> +%1</translation>
    </message>
    <message>
        <source>No learner named</source>
        <translation>Kein Name angegeben</translation>
    </message>
</context>
<context>
    <name>OverviewStrip</name>
    <message>
        <source>Part of the session that is shown: %1 to %2 of %3</source>
        <translation>Gezeigter Teil der Sitzung: %1 bis %2 von %3</translation>
    </message>
</context>
<context>
    <name>QuestionDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>RatePanel</name>
    <message>
        <source>Rate</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Target %1–%2</source>
        <translation>Ziel %1–%2</translation>
    </message>
    <message>
        <source>%1 per minute, %2</source>
        <translation>%1 pro Minute, %2</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>per min</source>
        <translation>pro min</translation>
    </message>
    <message>
        <source>Right rate</source>
        <translation>Richtige Frequenz</translation>
    </message>
    <message>
        <source>Too slow</source>
        <translation>Zu langsam</translation>
    </message>
    <message>
        <source>Too fast</source>
        <translation>Zu schnell</translation>
    </message>
    <message>
        <source>Ventilation rate</source>
        <translation>Beatmungsfrequenz</translation>
    </message>
</context>
<context>
    <name>RecordedFacts</name>
    <message>
        <source>From the recorded events</source>
        <translation>Aus den aufgezeichneten Ereignissen</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>Manikin</source>
        <translation>Übungspuppe</translation>
    </message>
    <message>
        <source>Recording: worked out from the events that arrived. Manikin: as it has sent it, by its own rules. Both can differ: the recording&apos;s mean rate goes by the time between two compressions, the shares by the running rate that the manikin showed; gaps of up to 2 s count as compressing; what was lost on the way only the manikin knows.</source>
        <translation>Aufzeichnung: aus den angekommenen Ereignissen berechnet. Übungspuppe: von ihr gesendet, nach ihren eigenen Regeln. Beide können voneinander abweichen: Die mittlere Frequenz der Aufzeichnung folgt aus dem Abstand zweier Kompressionen, die Anteile aus der laufenden Frequenz, die die Puppe anzeigte; Lücken bis 2 s zählen als Kompressionszeit; was unterwegs verloren ging, kennt nur die Puppe.</translation>
    </message>
    <message>
        <source>An empty cell was not sent, or there is nothing to work it out from.</source>
        <translation>Eine leere Zelle wurde nicht gesendet oder lässt sich nicht berechnen.</translation>
    </message>
    <message>
        <source>There are no figures of the manikin&apos;s own.</source>
        <translation>Es gibt keine eigenen Werte der Übungspuppe.</translation>
    </message>
</context>
<context>
    <name>RemarkActions</name>
    <message>
        <source>Correct…</source>
        <translation>Ändern…</translation>
    </message>
    <message>
        <source>Correct the remark (F2)</source>
        <translation>Vermerk ändern (F2)</translation>
    </message>
    <message>
        <source>Remove…</source>
        <translation>Entfernen…</translation>
    </message>
    <message>
        <source>Remove the remark (Del)</source>
        <translation>Vermerk entfernen (Entf)</translation>
    </message>
    <message>
        <source>Remove the remark?</source>
        <translation>Vermerk entfernen?</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>RemarkBar</name>
    <message>
        <source>Remark at %1</source>
        <translation>Vermerk bei %1</translation>
    </message>
    <message>
        <source>Correct the remark at %1</source>
        <translation>Vermerk bei %1 ändern</translation>
    </message>
    <message>
        <source>In your words</source>
        <translation>In eigenen Worten</translation>
    </message>
    <message>
        <source>Remark</source>
        <translation>Vermerken</translation>
    </message>
    <message>
        <source>Keep the remark (Enter)</source>
        <translation>Vermerk behalten (Eingabe)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>RenameDialog</name>
    <message>
        <source>Rename the learner in all sessions</source>
        <translation>In allen Sitzungen umbenennen</translation>
    </message>
    <message>
        <source>New name</source>
        <translation>Neuer Name</translation>
    </message>
    <message>
        <source>There is a learner of that name already. Both become one, for good.</source>
        <translation>Jemanden mit diesem Namen gibt es schon. Beide werden für immer eins.</translation>
    </message>
    <message>
        <source>Each session is saved anew with the new name.</source>
        <translation>Jede Sitzung wird mit dem neuen Namen neu gespeichert.</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ReplayGauge</name>
    <message>
        <source>below the target</source>
        <translation>unter dem Ziel</translation>
    </message>
    <message>
        <source>above the target</source>
        <translation>über dem Ziel</translation>
    </message>
</context>
<context>
    <name>ReplayGauges</name>
    <message>
        <source>Depth</source>
        <translation>Tiefe</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>/min</source>
        <translation>/min</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volumen</translation>
    </message>
    <message>
        <source>ml</source>
        <translation>ml</translation>
    </message>
</context>
<context>
    <name>ReportDialog</name>
    <message>
        <source>Report to take home</source>
        <translation>Bericht zum Mitnehmen</translation>
    </message>
    <message>
        <source>One page: the score, what was good and what to work on, the figures and the last sessions.</source>
        <translation>Eine Seite: das Ergebnis, was gut war und was zu üben ist, die Werte und die letzten Sitzungen.</translation>
    </message>
    <message>
        <source>Instructor&apos;s remark; without one there are lines to write on</source>
        <translation>Anmerkung der Kursleitung; ohne sie stehen dort Schreiblinien</translation>
    </message>
    <message>
        <source>Instructor&apos;s remark</source>
        <translation>Anmerkung der Kursleitung</translation>
    </message>
    <message>
        <source>Paper of the PDF</source>
        <translation>Papier des PDFs</translation>
    </message>
    <message>
        <source>Letter</source>
        <translation>Letter</translation>
    </message>
    <message>
        <source>Save as PDF…</source>
        <translation>Als PDF speichern…</translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>Drucken…</translation>
    </message>
    <message>
        <source>Print the page, with a preview</source>
        <translation>Die Seite drucken, mit Vorschau</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ResultsPanel</name>
    <message>
        <source>Date not known</source>
        <translation>Datum nicht bekannt</translation>
    </message>
    <message>
        <source>Overall</source>
        <translation>Gesamt</translation>
    </message>
    <message>
        <source>Compressions</source>
        <translation>Kompressionen</translation>
    </message>
    <message>
        <source>Ventilations</source>
        <translation>Beatmungen</translation>
    </message>
    <message>
        <source>Flow time</source>
        <translation>Hands-on-Zeit</translation>
    </message>
    <message>
        <source>Advice</source>
        <translation>Empfehlung</translation>
    </message>
    <message>
        <source>Scores come at the end.</source>
        <translation>Die Bewertung kommt am Ende.</translation>
    </message>
    <message>
        <source>These figures are worked out from the recorded events.</source>
        <translation>Diese Werte sind aus den aufgezeichneten Ereignissen berechnet.</translation>
    </message>
    <message>
        <source>None was given.</source>
        <translation>Keine gegeben.</translation>
    </message>
    <message>
        <source>There are no scores.</source>
        <translation>Es gibt keine Bewertung.</translation>
    </message>
</context>
<context>
    <name>RoomPage</name>
    <message>
        <source>Manikin lost</source>
        <translation>Puppe verloren</translation>
    </message>
    <message>
        <source>Silent</source>
        <translation>Still</translation>
    </message>
    <message>
        <source>Link gone</source>
        <translation>Verbindung weg</translation>
    </message>
    <message>
        <source>End the session?</source>
        <translation>Die Sitzung beenden?</translation>
    </message>
    <message>
        <source>End session</source>
        <translation>Sitzung beenden</translation>
    </message>
    <message numerus="yes">
        <source>End %n session(s)?</source>
        <translation>
            <numerusform>%n Sitzung beenden?</numerusform>
            <numerusform>%n Sitzungen beenden?</numerusform>
        </translation>
    </message>
    <message>
        <source>All that run end now.</source>
        <translation>Alle laufenden enden jetzt.</translation>
    </message>
    <message>
        <source>End all</source>
        <translation>Alle beenden</translation>
    </message>
    <message>
        <source>Manikins</source>
        <translation>Puppen</translation>
    </message>
    <message>
        <source>Start all</source>
        <translation>Alle starten</translation>
    </message>
    <message>
        <source>Start the sessions of all manikins that are ready (Shift+S)</source>
        <translation>Die Sitzungen aller bereiten Puppen starten (Umschalt+S)</translation>
    </message>
    <message>
        <source>End all…</source>
        <translation>Alle beenden…</translation>
    </message>
    <message>
        <source>End all sessions that run (Shift+E)</source>
        <translation>Alle laufenden Sitzungen beenden (Umschalt+E)</translation>
    </message>
    <message numerus="yes">
        <source>%n manikin(s)</source>
        <translation>
            <numerusform>%n Puppe</numerusform>
            <numerusform>%n Puppen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n running</source>
        <translation>
            <numerusform>%n läuft</numerusform>
            <numerusform>%n laufen</numerusform>
        </translation>
    </message>
    <message>
        <source>listens at %1</source>
        <translation>hört auf %1</translation>
    </message>
    <message>
        <source>Minutes a session</source>
        <translation>Minuten je Sitzung</translation>
    </message>
    <message>
        <source>any</source>
        <translation>offen</translation>
    </message>
    <message>
        <source>Class list…</source>
        <translation>Kursliste…</translation>
    </message>
    <message>
        <source>Who trains today (Ctrl+5)</source>
        <translation>Wer heute übt (Strg+5)</translation>
    </message>
    <message>
        <source>Add…</source>
        <translation>Hinzufügen…</translation>
    </message>
    <message>
        <source>Manikins over a link, or simulated ones</source>
        <translation>Puppen über eine Verbindung, oder simulierte</translation>
    </message>
    <message>
        <source>Manikins of the class</source>
        <translation>Puppen des Kurses</translation>
    </message>
    <message>
        <source>% right: of the compressions, by depth, rate and release (else of the ventilations, by volume)  ·  1–9, Enter: large  ·  S: start  ·  E: end  ·  L: learner</source>
        <translation>% richtig: der Kompressionen nach Tiefe, Frequenz und Entlastung (sonst der Beatmungen nach Volumen)  ·  1–9, Eingabe: groß  ·  S: Start  ·  E: Ende  ·  L: Person</translation>
    </message>
    <message>
        <source>No manikin is here yet.</source>
        <translation>Noch ist keine Puppe da.</translation>
    </message>
    <message>
        <source>Manikins appear as soon as they send to %1.</source>
        <translation>Puppen erscheinen, sobald sie an %1 senden.</translation>
    </message>
    <message>
        <source>Let the viewer listen for manikins, or add a simulated class to see how it works.</source>
        <translation>Das Programm auf Puppen hören lassen, oder mit einem simulierten Kurs sehen, wie es geht.</translation>
    </message>
    <message>
        <source>Listen for manikins…</source>
        <translation>Auf Puppen hören…</translation>
    </message>
    <message>
        <source>Simulated class…</source>
        <translation>Simulierter Kurs…</translation>
    </message>
    <message>
        <source>All manikins</source>
        <translation>Alle Puppen</translation>
    </message>
    <message>
        <source>Back to the class (Escape)</source>
        <translation>Zurück zum Kurs (Esc)</translation>
    </message>
    <message>
        <source>Change rescuer</source>
        <translation>Helfer wechseln</translation>
    </message>
    <message>
        <source>Change rescuer soon</source>
        <translation>Gleich Helferwechsel</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>noch %1</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Nächste</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Manikin before (Page up)</source>
        <translation>Vorige Puppe (Bild auf)</translation>
    </message>
    <message>
        <source>Next manikin (Page down)</source>
        <translation>Nächste Puppe (Bild ab)</translation>
    </message>
    <message>
        <source>Show large</source>
        <translation>Groß zeigen</translation>
    </message>
    <message>
        <source>Learner…</source>
        <translation>Person…</translation>
    </message>
    <message>
        <source>End session…</source>
        <translation>Sitzung beenden…</translation>
    </message>
    <message>
        <source>Take away</source>
        <translation>Wegnehmen</translation>
    </message>
    <message>
        <source>Listen for manikins</source>
        <translation>Auf Puppen hören</translation>
    </message>
    <message>
        <source>Where they send to: local:NAME or tcp:PORT on this machine, mqtt:HOST:PORT/SITE for a broker.</source>
        <translation>Wohin sie senden: local:NAME oder tcp:PORT auf diesem Rechner, mqtt:HOST:PORT/SITE über einen Broker.</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Listen</source>
        <translation>Hören</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Simulated class</source>
        <translation>Simulierter Kurs</translation>
    </message>
    <message>
        <source>Simulated rescuers, each with other faults, train in real time.</source>
        <translation>Simulierte Helfer mit verschiedenen Fehlern üben in Echtzeit.</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
</context>
<context>
    <name>ScenarioDialog</name>
    <message>
        <source>Simulated manikin</source>
        <translation>Simulierte Übungspuppe</translation>
    </message>
    <message>
        <source>A simulated rescuer trains, in real time.</source>
        <translation>Ein simulierter Helfer übt, in Echtzeit.</translation>
    </message>
    <message>
        <source>Scenario</source>
        <translation>Szenario</translation>
    </message>
    <message>
        <source>Seed</source>
        <translation>Startwert</translation>
    </message>
    <message>
        <source>The same seed gives the same session.</source>
        <translation>Gleicher Startwert, gleiche Sitzung.</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>For the next learner</source>
        <translation>Für die nächste Person</translation>
    </message>
</context>
<context>
    <name>ScoreTile</name>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>SessionList</name>
    <message>
        <source>Begin</source>
        <translation>Beginn</translation>
    </message>
    <message>
        <source>Learners</source>
        <translation>Lernende</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Score</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>Sitzungen</translation>
    </message>
    <message>
        <source>passed</source>
        <translation>bestanden</translation>
    </message>
    <message>
        <source>not passed</source>
        <translation>nicht bestanden</translation>
    </message>
</context>
<context>
    <name>SessionsPage</name>
    <message>
        <source>Search learner, file, manikin or remark</source>
        <translation>Name, Datei, Puppe oder Anmerkung suchen</translation>
    </message>
    <message>
        <source>Day or month</source>
        <translation>Tag oder Monat</translation>
    </message>
    <message>
        <source>No day</source>
        <translation>Kein Tag</translation>
    </message>
    <message>
        <source>A day, a month or a year: 2026-03-02, 2026-03, 2026</source>
        <translation>Ein Tag, ein Monat oder ein Jahr: 2026-03-02, 2026-03, 2026</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>All protocols</source>
        <translation>Alle Protokolle</translation>
    </message>
    <message>
        <source>Score</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>All scores</source>
        <translation>Alle Ergebnisse</translation>
    </message>
    <message>
        <source>From 75 %</source>
        <translation>Ab 75 %</translation>
    </message>
    <message>
        <source>50 to 74 %</source>
        <translation>50 bis 74 %</translation>
    </message>
    <message>
        <source>Below 50 %</source>
        <translation>Unter 50 %</translation>
    </message>
    <message>
        <source>The folder is being read…</source>
        <translation>Der Ordner wird gelesen…</translation>
    </message>
    <message>
        <source>No session found.</source>
        <translation>Keine Sitzung gefunden.</translation>
    </message>
    <message numerus="yes">
        <source>%n session(s)</source>
        <translation>
            <numerusform>%n Sitzung</numerusform>
            <numerusform>%n Sitzungen</numerusform>
        </translation>
    </message>
    <message>
        <source>Learners…</source>
        <translation>Lernende…</translation>
    </message>
    <message>
        <source>Correct the learners of the chosen session (F2)</source>
        <translation>Die Lernenden der gewählten Sitzung berichtigen (F2)</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>All sessions of the learner (L)</source>
        <translation>Alle Sitzungen der Person (L)</translation>
    </message>
    <message>
        <source>Class of the day</source>
        <translation>Kurs des Tages</translation>
    </message>
    <message>
        <source>All learners of that day (C)</source>
        <translation>Alle Lernenden dieses Tages (C)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open the chosen session (Enter)</source>
        <translation>Die gewählte Sitzung öffnen (Eingabe)</translation>
    </message>
</context>
<context>
    <name>SidePanel</name>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Guidelines</source>
        <translation>Leitlinien</translation>
    </message>
    <message>
        <source>Session</source>
        <translation>Sitzung</translation>
    </message>
    <message>
        <source>Shares in percent</source>
        <translation>Anteile in Prozent</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>Scores and reductions</source>
        <translation>Bewertung und Abzüge</translation>
    </message>
    <message>
        <source>What the session is judged by</source>
        <translation>Maßstab der Bewertung</translation>
    </message>
    <message>
        <source>Session and manikin</source>
        <translation>Sitzung und Übungspuppe</translation>
    </message>
    <message>
        <source>Faults</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>There are no statistics.</source>
        <translation>Es gibt keine Statistik.</translation>
    </message>
    <message>
        <source>The session names no guideline set. What it does not hold has the values of a new session.</source>
        <translation>Die Sitzung nennt keinen Leitliniensatz. Was sie nicht enthält, hat die Werte einer neuen Sitzung.</translation>
    </message>
</context>
<context>
    <name>SortHead</name>
    <message>
        <source>%1, descending</source>
        <translation>%1, absteigend</translation>
    </message>
    <message>
        <source>%1, ascending</source>
        <translation>%1, aufsteigend</translation>
    </message>
</context>
<context>
    <name>Sound</name>
    <message>
        <source>This machine has no sound output: metronome and tones are silent.</source>
        <translation>Dieser Rechner hat keine Tonausgabe: Metronom und Töne bleiben stumm.</translation>
    </message>
    <message>
        <source>This machine has no voice that speaks the viewer&apos;s language: advice is not spoken.</source>
        <translation>Dieser Rechner hat keine Stimme, die Deutsch spricht: Hinweise werden nicht gesprochen.</translation>
    </message>
</context>
<context>
    <name>SoundDialog</name>
    <message>
        <source>Sound for the learner</source>
        <translation>Ton für die Lernenden</translation>
    </message>
    <message>
        <source>Metronome</source>
        <translation>Metronom</translation>
    </message>
    <message>
        <source>In the middle of the guidelines&apos; rate, while the chest is to be pressed.</source>
        <translation>In der Mitte der vorgegebenen Frequenz, solange gedrückt werden soll.</translation>
    </message>
    <message>
        <source>Tones</source>
        <translation>Töne</translation>
    </message>
    <message>
        <source>Listen to the tone</source>
        <translation>Den Ton anhören</translation>
    </message>
    <message>
        <source>Spoken advice</source>
        <translation>Gesprochene Hinweise</translation>
    </message>
    <message>
        <source>The sentences of the live page.</source>
        <translation>Die Sätze der Live-Ansicht.</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>SoundTrack</name>
    <message>
        <source>Too shallow</source>
        <translation>Zu flach</translation>
    </message>
    <message>
        <source>Too slow</source>
        <translation>Zu langsam</translation>
    </message>
    <message>
        <source>Not released</source>
        <translation>Nicht entlastet</translation>
    </message>
    <message>
        <source>Pause too long</source>
        <translation>Pause zu lang</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Begin</source>
        <translation>Beginnen</translation>
    </message>
    <message>
        <source>Look a stored session over, or watch a training session live.</source>
        <translation>Eine gespeicherte Sitzung auswerten oder ein Training live verfolgen.</translation>
    </message>
    <message>
        <source>Open session…</source>
        <translation>Sitzung öffnen…</translation>
    </message>
    <message>
        <source>Simulated manikin…</source>
        <translation>Simulierte Übungspuppe…</translation>
    </message>
    <message>
        <source>Recent files</source>
        <translation>Zuletzt geöffnet</translation>
    </message>
    <message numerus="yes">
        <source>%n session(s) were not saved</source>
        <translation>
            <numerusform>%n Sitzung wurde nicht gespeichert</numerusform>
            <numerusform>%n Sitzungen wurden nicht gespeichert</numerusform>
        </translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>The stored sessions (Ctrl+3)</source>
        <translation>Die gespeicherten Sitzungen (Strg+3)</translation>
    </message>
    <message>
        <source>Class list</source>
        <translation>Kursliste</translation>
    </message>
    <message>
        <source>Who trains today (Ctrl+5)</source>
        <translation>Wer heute übt (Strg+5)</translation>
    </message>
    <message>
        <source>Next learner…</source>
        <translation>Nächste Person…</translation>
    </message>
    <message>
        <source>Start the session of the next learner (Ctrl+N)</source>
        <translation>Die Sitzung der nächsten Person beginnen (Strg+N)</translation>
    </message>
    <message>
        <source>Last class</source>
        <translation>Letzter Kurs</translation>
    </message>
    <message>
        <source>How the class did (Ctrl+4)</source>
        <translation>Wie der Kurs abschnitt (Strg+4)</translation>
    </message>
    <message>
        <source>They ended with the viewer, or without a library to go to. Everything up to then is there.</source>
        <translation>Sie endeten mit dem Programm oder ohne Bibliothek. Alles bis dahin ist da.</translation>
    </message>
    <message>
        <source>Manikins</source>
        <translation>Puppen</translation>
    </message>
    <message>
        <source>A class that trains at the same time (Ctrl+7)</source>
        <translation>Ein Kurs, der gleichzeitig übt (Strg+7)</translation>
    </message>
</context>
<context>
    <name>TileFigure</name>
    <message>
        <source>too low</source>
        <translation>zu niedrig</translation>
    </message>
    <message>
        <source>right</source>
        <translation>richtig</translation>
    </message>
    <message>
        <source>too high</source>
        <translation>zu hoch</translation>
    </message>
</context>
<context>
    <name>TimelinePanel</name>
    <message>
        <source>Timeline from %1 to %2, at %3</source>
        <translation>Zeitleiste von %1 bis %2, bei %3</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>Play the session back (space)</source>
        <translation>Sitzung abspielen (Leertaste)</translation>
    </message>
    <message>
        <source>%1×</source>
        <translation>%1×</translation>
    </message>
    <message>
        <source>Speed of the playback</source>
        <translation>Geschwindigkeit</translation>
    </message>
    <message>
        <source>Previous event (P)</source>
        <translation>Voriges Ereignis (P)</translation>
    </message>
    <message>
        <source>Next event (N)</source>
        <translation>Nächstes Ereignis (N)</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Show more time (−)</source>
        <translation>Mehr Zeit zeigen (−)</translation>
    </message>
    <message>
        <source>Show less time (+)</source>
        <translation>Weniger Zeit zeigen (+)</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Show the whole session (F)</source>
        <translation>Ganze Sitzung zeigen (F)</translation>
    </message>
    <message>
        <source>%1 s not received</source>
        <translation>%1 s fehlen</translation>
    </message>
    <message>
        <source>Previous fault (Shift+P)</source>
        <translation>Voriger Fehler (Umschalt+P)</translation>
    </message>
    <message>
        <source>Next fault (Shift+N)</source>
        <translation>Nächster Fehler (Umschalt+N)</translation>
    </message>
    <message>
        <source>Remark on this time (T)</source>
        <translation>Vermerk zu diesem Zeitpunkt (T)</translation>
    </message>
    <message>
        <source>Stop the playback (space)</source>
        <translation>Wiedergabe anhalten (Leertaste)</translation>
    </message>
</context>
<context>
    <name>Viewer</name>
    <message>
        <source>Recovered session</source>
        <translation>Wiederhergestellte Sitzung</translation>
    </message>
    <message>
        <source>There is no scenario &quot;%1&quot;.</source>
        <translation>Es gibt kein Szenario „%1“.</translation>
    </message>
    <message>
        <source>Simulated: %1</source>
        <translation>Simuliert: %1</translation>
    </message>
    <message>
        <source>The session&apos;s journal is written again; nothing is missing.</source>
        <translation>Die Sitzung wird wieder gesichert; es fehlt nichts.</translation>
    </message>
    <message>
        <source>Another file is still being written.</source>
        <translation>Eine andere Datei wird noch geschrieben.</translation>
    </message>
    <message>
        <source>Saved as %1.</source>
        <translation>Gespeichert als %1.</translation>
    </message>
    <message>
        <source>Exported to %1.</source>
        <translation>Exportiert nach %1.</translation>
    </message>
    <message>
        <source>The damaged file is kept as %1.</source>
        <translation>Die beschädigte Datei bleibt als %1 erhalten.</translation>
    </message>
    <message>
        <source>salvaged</source>
        <translation>gerettet</translation>
    </message>
    <message>
        <source>%1 cannot be read.</source>
        <translation>%1 ist nicht lesbar.</translation>
    </message>
    <message numerus="yes">
        <source>%n learner(s) added.</source>
        <translation>
            <numerusform>%n Lernende(r) hinzugefügt.</numerusform>
            <numerusform>%n Lernende hinzugefügt.</numerusform>
        </translation>
    </message>
    <message>
        <source>The class list cannot be stored: %1</source>
        <translation>Die Kursliste kann nicht gespeichert werden: %1</translation>
    </message>
    <message>
        <source>Print reports</source>
        <translation>Berichte drucken</translation>
    </message>
</context>
<context>
    <name>ViewerMenu</name>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>Simulated &amp;manikin…</source>
        <translation>Simulierte Übungs&amp;puppe…</translation>
    </message>
    <message>
        <source>&amp;Recent files</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Speichern…</translation>
    </message>
    <message>
        <source>Export &amp;table</source>
        <translation>&amp;Tabelle exportieren</translation>
    </message>
    <message>
        <source>Events…</source>
        <translation>Ereignisse…</translation>
    </message>
    <message>
        <source>Summary…</source>
        <translation>Zusammenfassung…</translation>
    </message>
    <message>
        <source>Waves…</source>
        <translation>Kurven…</translation>
    </message>
    <message>
        <source>Guidelines…</source>
        <translation>Leitlinien…</translation>
    </message>
    <message>
        <source>Export &amp;picture…</source>
        <translation>&amp;Bild exportieren…</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>&amp;Darstellung</translation>
    </message>
    <message>
        <source>As the system</source>
        <translation>Wie das System</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>S&amp;prache</translation>
    </message>
    <message>
        <source>&amp;Keys</source>
        <translation>T&amp;asten</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Compare…</source>
        <translation>&amp;Vergleichen…</translation>
    </message>
    <message>
        <source>&amp;Library</source>
        <translation>&amp;Bibliothek</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>Sitzungen</translation>
    </message>
    <message>
        <source>Learners</source>
        <translation>Lernende</translation>
    </message>
    <message>
        <source>Class</source>
        <translation>Kurs</translation>
    </message>
    <message>
        <source>Class list</source>
        <translation>Kursliste</translation>
    </message>
    <message>
        <source>Re&amp;port…</source>
        <translation>Be&amp;richt…</translation>
    </message>
    <message>
        <source>Ma&amp;nikins</source>
        <translation>&amp;Puppen</translation>
    </message>
    <message>
        <source>Close learner&apos;s &amp;view</source>
        <translation>Ansicht der Ler&amp;nenden schließen</translation>
    </message>
    <message>
        <source>Learner&apos;s &amp;view</source>
        <translation>Ansicht der Ler&amp;nenden</translation>
    </message>
    <message>
        <source>So&amp;und…</source>
        <translation>T&amp;on…</translation>
    </message>
</context>
<context>
    <name>VolumePanel</name>
    <message>
        <source>Ventilation</source>
        <translation>Beatmung</translation>
    </message>
    <message>
        <source>Target %1–%2 ml</source>
        <translation>Ziel %1–%2 ml</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>noch keine</translation>
    </message>
    <message>
        <source>%1 ml, %2</source>
        <translation>%1 ml, %2</translation>
    </message>
    <message>
        <source>ml</source>
        <translation>ml</translation>
    </message>
    <message>
        <source>Right volume</source>
        <translation>Richtiges Volumen</translation>
    </message>
    <message>
        <source>Too little</source>
        <translation>Zu wenig</translation>
    </message>
    <message>
        <source>Too much</source>
        <translation>Zu viel</translation>
    </message>
</context>
<context>
    <name>cprquick</name>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
    <message>
        <source>%1 per min</source>
        <translation>%1 pro min</translation>
    </message>
    <message>
        <source>%1 ml</source>
        <translation>%1 ml</translation>
    </message>
    <message>
        <source>Guideline set</source>
        <translation>Leitliniensatz</translation>
    </message>
    <message>
        <source>Compression depth</source>
        <translation>Drucktiefe</translation>
    </message>
    <message>
        <source>Compression rate</source>
        <translation>Kompressionsfrequenz</translation>
    </message>
    <message>
        <source>Compressions in a cycle</source>
        <translation>Kompressionen je Zyklus</translation>
    </message>
    <message>
        <source>Compressions in a cycle, two rescuers</source>
        <translation>Kompressionen je Zyklus, zwei Helfer</translation>
    </message>
    <message>
        <source>Ventilations in a cycle</source>
        <translation>Beatmungen je Zyklus</translation>
    </message>
    <message>
        <source>Ventilation volume</source>
        <translation>Beatmungsvolumen</translation>
    </message>
    <message>
        <source>Inflation time</source>
        <translation>Inspirationszeit</translation>
    </message>
    <message>
        <source>Ventilation rate</source>
        <translation>Beatmungsfrequenz</translation>
    </message>
    <message>
        <source>Ventilation rate, two rescuers</source>
        <translation>Beatmungsfrequenz, zwei Helfer</translation>
    </message>
    <message>
        <source>Ventilation rate, ventilations only</source>
        <translation>Beatmungsfrequenz, nur Beatmung</translation>
    </message>
    <message>
        <source>A pause in CPR begins after</source>
        <translation>Eine Pause zählt ab</translation>
    </message>
    <message>
        <source>Ventilations before the first compression</source>
        <translation>Beatmungen vor der ersten Kompression</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Depth</source>
        <translation>Tiefe</translation>
    </message>
    <message>
        <source>Release</source>
        <translation>Entlastung</translation>
    </message>
    <message>
        <source>Pauses</source>
        <translation>Pausen</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volumen</translation>
    </message>
    <message>
        <source>Shock</source>
        <translation>Schock</translation>
    </message>
    <message>
        <source>Hint: a little more volume</source>
        <translation>Hinweis: etwas mehr Volumen</translation>
    </message>
    <message>
        <source>Hint: more volume</source>
        <translation>Hinweis: mehr Volumen</translation>
    </message>
    <message>
        <source>Hint: ventilate more often</source>
        <translation>Hinweis: häufiger beatmen</translation>
    </message>
    <message>
        <source>Hint: ventilate less often</source>
        <translation>Hinweis: seltener beatmen</translation>
    </message>
    <message>
        <source>Hint: blow more slowly</source>
        <translation>Hinweis: langsamer beatmen</translation>
    </message>
    <message>
        <source>Hint: blow a little more slowly</source>
        <translation>Hinweis: etwas langsamer beatmen</translation>
    </message>
    <message>
        <source>Hint: blow faster</source>
        <translation>Hinweis: schneller beatmen</translation>
    </message>
    <message>
        <source>Hint: press a little deeper</source>
        <translation>Hinweis: etwas tiefer drücken</translation>
    </message>
    <message>
        <source>Hint: press deeper</source>
        <translation>Hinweis: tiefer drücken</translation>
    </message>
    <message>
        <source>Hint: press not quite so deep</source>
        <translation>Hinweis: etwas weniger tief drücken</translation>
    </message>
    <message>
        <source>Hint: press not so deep</source>
        <translation>Hinweis: weniger tief drücken</translation>
    </message>
    <message>
        <source>Hint: press a little faster</source>
        <translation>Hinweis: etwas schneller drücken</translation>
    </message>
    <message>
        <source>Hint: press faster</source>
        <translation>Hinweis: schneller drücken</translation>
    </message>
    <message>
        <source>Hint: press a little more slowly</source>
        <translation>Hinweis: etwas langsamer drücken</translation>
    </message>
    <message>
        <source>Hint: press more slowly</source>
        <translation>Hinweis: langsamer drücken</translation>
    </message>
    <message>
        <source>Hint: duty cycle</source>
        <translation>Hinweis: Verhältnis Druck zu Entlastung</translation>
    </message>
    <message>
        <source>Hint: release the chest</source>
        <translation>Hinweis: Brustkorb entlasten</translation>
    </message>
    <message>
        <source>Pause in compressions</source>
        <translation>Kompressionspause</translation>
    </message>
    <message>
        <source>Pause in CPR</source>
        <translation>Pause der Reanimation</translation>
    </message>
    <message>
        <source>Pause in ventilations</source>
        <translation>Beatmungspause</translation>
    </message>
    <message>
        <source>Compression</source>
        <translation>Kompression</translation>
    </message>
    <message>
        <source>Ventilation</source>
        <translation>Beatmung</translation>
    </message>
    <message>
        <source>Session</source>
        <translation>Sitzung</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>Scores</source>
        <translation>Bewertung</translation>
    </message>
    <message>
        <source>AED</source>
        <translation>AED</translation>
    </message>
    <message>
        <source>ECG rhythm</source>
        <translation>EKG-Rhythmus</translation>
    </message>
    <message>
        <source>User event</source>
        <translation>Eigenes Ereignis</translation>
    </message>
    <message>
        <source>Link lost</source>
        <translation>Verbindung unterbrochen</translation>
    </message>
    <message>
        <source>Link back</source>
        <translation>Verbindung wieder da</translation>
    </message>
    <message>
        <source>Undershoot depth</source>
        <translation>Tiefe des Unterschwingens</translation>
    </message>
    <message>
        <source>Peak force</source>
        <translation>Größte Kraft</translation>
    </message>
    <message>
        <source>Release force</source>
        <translation>Restkraft bei Entlastung</translation>
    </message>
    <message>
        <source>Duty cycle</source>
        <translation>Verhältnis Druck zu Entlastung</translation>
    </message>
    <message>
        <source>Duty cycle valid</source>
        <translation>Verhältnis gültig</translation>
    </message>
    <message>
        <source>Leaning</source>
        <translation>Aufstützen</translation>
    </message>
    <message>
        <source>Leading slope time</source>
        <translation>Druckzeit</translation>
    </message>
    <message>
        <source>Trailing slope time</source>
        <translation>Entlastungszeit</translation>
    </message>
    <message>
        <source>Compression time</source>
        <translation>Dauer der Kompression</translation>
    </message>
    <message>
        <source>Force units</source>
        <translation>Einheit der Kraft</translation>
    </message>
    <message>
        <source>Depth units</source>
        <translation>Einheit der Tiefe</translation>
    </message>
    <message>
        <source>Incomplete release</source>
        <translation>Unvollständige Entlastung</translation>
    </message>
    <message>
        <source>Time of depth peak</source>
        <translation>Zeit der größten Tiefe</translation>
    </message>
    <message>
        <source>Time since last compression</source>
        <translation>Zeit seit der letzten Kompression</translation>
    </message>
    <message>
        <source>Hands too low</source>
        <translation>Hände zu tief angesetzt</translation>
    </message>
    <message>
        <source>Release depth</source>
        <translation>Resttiefe bei Entlastung</translation>
    </message>
    <message>
        <source>Absolute peak depth</source>
        <translation>Größte absolute Tiefe</translation>
    </message>
    <message>
        <source>Leaning depth</source>
        <translation>Tiefe durch Aufstützen</translation>
    </message>
    <message>
        <source>Leaning force</source>
        <translation>Kraft durch Aufstützen</translation>
    </message>
    <message>
        <source>Hands in the wrong place</source>
        <translation>Falscher Druckpunkt</translation>
    </message>
    <message>
        <source>Length of pause</source>
        <translation>Dauer der Pause</translation>
    </message>
    <message>
        <source>Compressions</source>
        <translation>Kompressionen</translation>
    </message>
    <message>
        <source>Compression cycles</source>
        <translation>Kompressionszyklen</translation>
    </message>
    <message>
        <source>Compressions with complete release</source>
        <translation>Kompressionen mit voller Entlastung</translation>
    </message>
    <message>
        <source>Compressions with a rate</source>
        <translation>Kompressionen mit Frequenz</translation>
    </message>
    <message>
        <source>Complete release</source>
        <translation>Vollständige Entlastung</translation>
    </message>
    <message>
        <source>Correct compression rate</source>
        <translation>Richtige Kompressionsfrequenz</translation>
    </message>
    <message>
        <source>Compression rate too low</source>
        <translation>Zu niedrige Kompressionsfrequenz</translation>
    </message>
    <message>
        <source>Correct depth</source>
        <translation>Richtige Drucktiefe</translation>
    </message>
    <message>
        <source>Correct stroke length</source>
        <translation>Richtiger Druckhub</translation>
    </message>
    <message>
        <source>Deep enough</source>
        <translation>Tief genug</translation>
    </message>
    <message>
        <source>Mean depth</source>
        <translation>Mittlere Drucktiefe</translation>
    </message>
    <message>
        <source>Mean compression rate</source>
        <translation>Mittlere Kompressionsfrequenz</translation>
    </message>
    <message>
        <source>Mean stroke length</source>
        <translation>Mittlerer Druckhub</translation>
    </message>
    <message>
        <source>Compression score</source>
        <translation>Bewertung der Kompressionen</translation>
    </message>
    <message>
        <source>Pauses in compressions</source>
        <translation>Kompressionspausen</translation>
    </message>
    <message>
        <source>Deviation of depth</source>
        <translation>Streuung der Drucktiefe</translation>
    </message>
    <message>
        <source>Mean release depth</source>
        <translation>Mittlere Resttiefe</translation>
    </message>
    <message>
        <source>Deviation of release depth</source>
        <translation>Streuung der Resttiefe</translation>
    </message>
    <message>
        <source>Deviation of compression rate</source>
        <translation>Streuung der Kompressionsfrequenz</translation>
    </message>
    <message>
        <source>Correct hand position</source>
        <translation>Richtiger Druckpunkt</translation>
    </message>
    <message>
        <source>Deviation of stroke length</source>
        <translation>Streuung des Druckhubs</translation>
    </message>
    <message>
        <source>Reduction for incomplete release</source>
        <translation>Abzug für unvollständige Entlastung</translation>
    </message>
    <message>
        <source>Reduction for shallow compressions</source>
        <translation>Abzug für flache Kompressionen</translation>
    </message>
    <message>
        <source>Reduction for deep compressions</source>
        <translation>Abzug für zu tiefe Kompressionen</translation>
    </message>
    <message>
        <source>Reduction for slow compressions</source>
        <translation>Abzug für langsame Kompressionen</translation>
    </message>
    <message>
        <source>Reduction for fast compressions</source>
        <translation>Abzug für schnelle Kompressionen</translation>
    </message>
    <message>
        <source>Reduction for hand position</source>
        <translation>Abzug für den Druckpunkt</translation>
    </message>
    <message>
        <source>Reduction for stroke length</source>
        <translation>Abzug für den Druckhub</translation>
    </message>
    <message>
        <source>Reduction for compressions per cycle</source>
        <translation>Abzug für Kompressionen je Zyklus</translation>
    </message>
    <message>
        <source>Reduction for flow time</source>
        <translation>Abzug für die Hands-on-Zeit</translation>
    </message>
    <message>
        <source>Time without flow</source>
        <translation>Hands-off-Zeit</translation>
    </message>
    <message>
        <source>Raw volume</source>
        <translation>Rohvolumen</translation>
    </message>
    <message>
        <source>Uncorrected volume</source>
        <translation>Unkorrigiertes Volumen</translation>
    </message>
    <message>
        <source>Volume units</source>
        <translation>Einheit des Volumens</translation>
    </message>
    <message>
        <source>Time of volume peak</source>
        <translation>Zeit des größten Volumens</translation>
    </message>
    <message>
        <source>During a compression</source>
        <translation>Während einer Kompression</translation>
    </message>
    <message>
        <source>Time since last ventilation</source>
        <translation>Zeit seit der letzten Beatmung</translation>
    </message>
    <message>
        <source>Ventilations</source>
        <translation>Beatmungen</translation>
    </message>
    <message>
        <source>Correct volume</source>
        <translation>Richtiges Volumen</translation>
    </message>
    <message>
        <source>Too much volume</source>
        <translation>Zu viel Volumen</translation>
    </message>
    <message>
        <source>Not enough volume</source>
        <translation>Zu wenig Volumen</translation>
    </message>
    <message>
        <source>Mean ventilation rate</source>
        <translation>Mittlere Beatmungsfrequenz</translation>
    </message>
    <message>
        <source>Mean volume</source>
        <translation>Mittleres Volumen</translation>
    </message>
    <message>
        <source>Ventilation score</source>
        <translation>Bewertung der Beatmungen</translation>
    </message>
    <message>
        <source>Ventilation cycles</source>
        <translation>Beatmungszyklen</translation>
    </message>
    <message>
        <source>Deviation of volume</source>
        <translation>Streuung des Volumens</translation>
    </message>
    <message>
        <source>Deviation of ventilation rate</source>
        <translation>Streuung der Beatmungsfrequenz</translation>
    </message>
    <message>
        <source>Correct ventilation rate in CPR</source>
        <translation>Richtige Beatmungsfrequenz bei Reanimation</translation>
    </message>
    <message>
        <source>Ventilation rate too high in CPR</source>
        <translation>Zu hohe Beatmungsfrequenz bei Reanimation</translation>
    </message>
    <message>
        <source>Correct rate, ventilations only</source>
        <translation>Richtige Frequenz, nur Beatmung</translation>
    </message>
    <message>
        <source>Rate too high, ventilations only</source>
        <translation>Zu hohe Frequenz, nur Beatmung</translation>
    </message>
    <message>
        <source>Correct inflation time</source>
        <translation>Richtige Inspirationszeit</translation>
    </message>
    <message>
        <source>Inflation too fast</source>
        <translation>Zu schnelle Inspiration</translation>
    </message>
    <message>
        <source>Reduction for too little volume</source>
        <translation>Abzug für zu wenig Volumen</translation>
    </message>
    <message>
        <source>Reduction for too much volume</source>
        <translation>Abzug für zu viel Volumen</translation>
    </message>
    <message>
        <source>Reduction for slow ventilations</source>
        <translation>Abzug für langsame Beatmung</translation>
    </message>
    <message>
        <source>Reduction for fast ventilations</source>
        <translation>Abzug für schnelle Beatmung</translation>
    </message>
    <message>
        <source>Reduction for long pauses to ventilate</source>
        <translation>Abzug für lange Pausen zur Beatmung</translation>
    </message>
    <message>
        <source>Reduction for ventilations per cycle</source>
        <translation>Abzug für Beatmungen je Zyklus</translation>
    </message>
    <message>
        <source>Mean length of pauses</source>
        <translation>Mittlere Dauer der Pausen</translation>
    </message>
    <message>
        <source>Shock energy</source>
        <translation>Schockenergie</translation>
    </message>
    <message>
        <source>Protocol</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Instructor</source>
        <translation>Ausbilder</translation>
    </message>
    <message>
        <source>Learners</source>
        <translation>Übende</translation>
    </message>
    <message>
        <source>Manikin type</source>
        <translation>Art der Übungspuppe</translation>
    </message>
    <message>
        <source>Firmware version</source>
        <translation>Firmware-Version</translation>
    </message>
    <message>
        <source>Chest stiffness</source>
        <translation>Härte des Brustkorbs</translation>
    </message>
    <message>
        <source>Manikin name</source>
        <translation>Name der Übungspuppe</translation>
    </message>
    <message>
        <source>Compressions in the manikin&apos;s life</source>
        <translation>Kompressionen insgesamt auf der Übungspuppe</translation>
    </message>
    <message>
        <source>Identification reader version</source>
        <translation>Version des Kennungslesers</translation>
    </message>
    <message>
        <source>Airway sensor version</source>
        <translation>Version des Atemwegssensors</translation>
    </message>
    <message>
        <source>Remote control</source>
        <translation>Fernbedienung</translation>
    </message>
    <message>
        <source>Remote control version</source>
        <translation>Version der Fernbedienung</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Beginn</translation>
    </message>
    <message>
        <source>End</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>First advice</source>
        <translation>Erste Empfehlung</translation>
    </message>
    <message>
        <source>Second advice</source>
        <translation>Zweite Empfehlung</translation>
    </message>
    <message>
        <source>Overall score</source>
        <translation>Gesamtbewertung</translation>
    </message>
    <message>
        <source>Threshold of the basic level</source>
        <translation>Schwelle der Grundstufe</translation>
    </message>
    <message>
        <source>Threshold of the advanced level</source>
        <translation>Schwelle der Fortgeschrittenenstufe</translation>
    </message>
    <message>
        <source>Wave delay</source>
        <translation>Verzögerung der Kurve</translation>
    </message>
    <message>
        <source>Soft surface</source>
        <translation>Weiche Unterlage</translation>
    </message>
    <message>
        <source>Length of the session</source>
        <translation>Dauer der Sitzung</translation>
    </message>
    <message>
        <source>CPR card</source>
        <translation>CPR-Karte</translation>
    </message>
    <message>
        <source>CPR card time</source>
        <translation>Zeit der CPR-Karte</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Time to first shock</source>
        <translation>Zeit bis zum ersten Schock</translation>
    </message>
    <message>
        <source>Time to first compression</source>
        <translation>Zeit bis zur ersten Kompression</translation>
    </message>
    <message>
        <source>Time to first ventilation</source>
        <translation>Zeit bis zur ersten Beatmung</translation>
    </message>
    <message>
        <source>Flow time</source>
        <translation>Hands-on-Zeit</translation>
    </message>
    <message>
        <source>Depth histogram, bar 1</source>
        <translation>Tiefen-Histogramm, Balken 1</translation>
    </message>
    <message>
        <source>Depth histogram, bar 2</source>
        <translation>Tiefen-Histogramm, Balken 2</translation>
    </message>
    <message>
        <source>Depth histogram, bar 3</source>
        <translation>Tiefen-Histogramm, Balken 3</translation>
    </message>
    <message>
        <source>Depth histogram, bar 4</source>
        <translation>Tiefen-Histogramm, Balken 4</translation>
    </message>
    <message>
        <source>Depth histogram, bar 5</source>
        <translation>Tiefen-Histogramm, Balken 5</translation>
    </message>
    <message>
        <source>Depth histogram, bar 6</source>
        <translation>Tiefen-Histogramm, Balken 6</translation>
    </message>
    <message>
        <source>Release histogram, bar 1</source>
        <translation>Entlastungs-Histogramm, Balken 1</translation>
    </message>
    <message>
        <source>Release histogram, bar 2</source>
        <translation>Entlastungs-Histogramm, Balken 2</translation>
    </message>
    <message>
        <source>Release histogram, bar 3</source>
        <translation>Entlastungs-Histogramm, Balken 3</translation>
    </message>
    <message>
        <source>Release histogram, bar 4</source>
        <translation>Entlastungs-Histogramm, Balken 4</translation>
    </message>
    <message>
        <source>Release histogram, bar 5</source>
        <translation>Entlastungs-Histogramm, Balken 5</translation>
    </message>
    <message>
        <source>Release histogram, bar 6</source>
        <translation>Entlastungs-Histogramm, Balken 6</translation>
    </message>
    <message>
        <source>Compression rate histogram, bar 1</source>
        <translation>Kompressionsfrequenz-Histogramm, Balken 1</translation>
    </message>
    <message>
        <source>Compression rate histogram, bar 2</source>
        <translation>Kompressionsfrequenz-Histogramm, Balken 2</translation>
    </message>
    <message>
        <source>Compression rate histogram, bar 3</source>
        <translation>Kompressionsfrequenz-Histogramm, Balken 3</translation>
    </message>
    <message>
        <source>Compression rate histogram, bar 4</source>
        <translation>Kompressionsfrequenz-Histogramm, Balken 4</translation>
    </message>
    <message>
        <source>Compression rate histogram, bar 5</source>
        <translation>Kompressionsfrequenz-Histogramm, Balken 5</translation>
    </message>
    <message>
        <source>Compression rate histogram, bar 6</source>
        <translation>Kompressionsfrequenz-Histogramm, Balken 6</translation>
    </message>
    <message>
        <source>Pause histogram, bar 1</source>
        <translation>Pausen-Histogramm, Balken 1</translation>
    </message>
    <message>
        <source>Pause histogram, bar 2</source>
        <translation>Pausen-Histogramm, Balken 2</translation>
    </message>
    <message>
        <source>Pause histogram, bar 3</source>
        <translation>Pausen-Histogramm, Balken 3</translation>
    </message>
    <message>
        <source>Pause histogram, bar 4</source>
        <translation>Pausen-Histogramm, Balken 4</translation>
    </message>
    <message>
        <source>Pause histogram, bar 5</source>
        <translation>Pausen-Histogramm, Balken 5</translation>
    </message>
    <message>
        <source>Pause histogram, bar 6</source>
        <translation>Pausen-Histogramm, Balken 6</translation>
    </message>
    <message>
        <source>Volume histogram, bar 1</source>
        <translation>Volumen-Histogramm, Balken 1</translation>
    </message>
    <message>
        <source>Volume histogram, bar 2</source>
        <translation>Volumen-Histogramm, Balken 2</translation>
    </message>
    <message>
        <source>Volume histogram, bar 3</source>
        <translation>Volumen-Histogramm, Balken 3</translation>
    </message>
    <message>
        <source>Volume histogram, bar 4</source>
        <translation>Volumen-Histogramm, Balken 4</translation>
    </message>
    <message>
        <source>Volume histogram, bar 5</source>
        <translation>Volumen-Histogramm, Balken 5</translation>
    </message>
    <message>
        <source>Volume histogram, bar 6</source>
        <translation>Volumen-Histogramm, Balken 6</translation>
    </message>
    <message>
        <source>Ventilation rate histogram, bar 1</source>
        <translation>Beatmungsfrequenz-Histogramm, Balken 1</translation>
    </message>
    <message>
        <source>Ventilation rate histogram, bar 2</source>
        <translation>Beatmungsfrequenz-Histogramm, Balken 2</translation>
    </message>
    <message>
        <source>Ventilation rate histogram, bar 3</source>
        <translation>Beatmungsfrequenz-Histogramm, Balken 3</translation>
    </message>
    <message>
        <source>Ventilation rate histogram, bar 4</source>
        <translation>Beatmungsfrequenz-Histogramm, Balken 4</translation>
    </message>
    <message>
        <source>Ventilation rate histogram, bar 5</source>
        <translation>Beatmungsfrequenz-Histogramm, Balken 5</translation>
    </message>
    <message>
        <source>Ventilation rate histogram, bar 6</source>
        <translation>Beatmungsfrequenz-Histogramm, Balken 6</translation>
    </message>
    <message>
        <source>AED event</source>
        <translation>AED-Ereignis</translation>
    </message>
    <message>
        <source>Delayed switching on</source>
        <translation>Verzögertes Einschalten</translation>
    </message>
    <message>
        <source>AED scenario</source>
        <translation>AED-Szenario</translation>
    </message>
    <message>
        <source>Step of the AED scenario</source>
        <translation>Schritt des AED-Szenarios</translation>
    </message>
    <message>
        <source>Scenario on the remote control</source>
        <translation>Szenario der Fernbedienung</translation>
    </message>
    <message>
        <source>Button on the remote control</source>
        <translation>Taste der Fernbedienung</translation>
    </message>
    <message>
        <source>For all manikins</source>
        <translation>Für alle Übungspuppen</translation>
    </message>
    <message>
        <source>Pulse</source>
        <translation>Puls</translation>
    </message>
    <message>
        <source>Shockable</source>
        <translation>Schockbar</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Kind of user event</source>
        <translation>Art des eigenen Ereignisses</translation>
    </message>
    <message>
        <source>Kind of simulation</source>
        <translation>Art der Simulation</translation>
    </message>
    <message>
        <source>Scored with an AED</source>
        <translation>Bewertet mit AED</translation>
    </message>
    <message>
        <source>CPR score</source>
        <translation>Bewertung der Reanimation</translation>
    </message>
    <message>
        <source>AED score</source>
        <translation>Bewertung des AED-Einsatzes</translation>
    </message>
    <message>
        <source>Reduction for too few ventilations at the start</source>
        <translation>Abzug für zu wenige Beatmungen zu Beginn</translation>
    </message>
    <message>
        <source>Reduction for too many ventilations at the start</source>
        <translation>Abzug für zu viele Beatmungen zu Beginn</translation>
    </message>
    <message>
        <source>Ventilations at the start</source>
        <translation>Beatmungen zu Beginn</translation>
    </message>
    <message>
        <source>Ventilations in the manikin&apos;s life</source>
        <translation>Beatmungen insgesamt an der Übungspuppe</translation>
    </message>
    <message>
        <source>Fewest compressions in a cycle</source>
        <translation>Wenigste Kompressionen im Zyklus</translation>
    </message>
    <message>
        <source>Most compressions in a cycle</source>
        <translation>Meiste Kompressionen im Zyklus</translation>
    </message>
    <message>
        <source>Mean number of compressions in a cycle</source>
        <translation>Mittlere Zahl der Kompressionen im Zyklus</translation>
    </message>
    <message>
        <source>Compressions without a fault</source>
        <translation>Kompressionen ohne Fehler</translation>
    </message>
    <message>
        <source>Mean inflation time</source>
        <translation>Mittlere Inspirationszeit</translation>
    </message>
    <message>
        <source>Deviation of inflation time</source>
        <translation>Streuung der Inspirationszeit</translation>
    </message>
    <message>
        <source>Fewest ventilations in a cycle</source>
        <translation>Wenigste Beatmungen im Zyklus</translation>
    </message>
    <message>
        <source>Most ventilations in a cycle</source>
        <translation>Meiste Beatmungen im Zyklus</translation>
    </message>
    <message>
        <source>Mean number of ventilations in a cycle</source>
        <translation>Mittlere Zahl der Beatmungen im Zyklus</translation>
    </message>
    <message>
        <source>Reduction for slow inflation</source>
        <translation>Abzug für langsame Inspiration</translation>
    </message>
    <message>
        <source>Reduction for fast inflation</source>
        <translation>Abzug für schnelle Inspiration</translation>
    </message>
    <message>
        <source>Reduction for too few ventilations per minute</source>
        <translation>Abzug für zu wenige Beatmungen pro Minute</translation>
    </message>
    <message>
        <source>Reduction for too many ventilations per minute</source>
        <translation>Abzug für zu viele Beatmungen pro Minute</translation>
    </message>
    <message>
        <source>Battery: cycles</source>
        <translation>Akku: Zyklen</translation>
    </message>
    <message>
        <source>Battery: slow charges</source>
        <translation>Akku: langsame Ladungen</translation>
    </message>
    <message>
        <source>Battery: fast charges</source>
        <translation>Akku: schnelle Ladungen</translation>
    </message>
    <message>
        <source>Battery: time of slow charging</source>
        <translation>Akku: Dauer langsamen Ladens</translation>
    </message>
    <message>
        <source>Battery: time of fast charging</source>
        <translation>Akku: Dauer schnellen Ladens</translation>
    </message>
    <message>
        <source>Battery: time of charging in the cold</source>
        <translation>Akku: Ladedauer bei Kälte</translation>
    </message>
    <message>
        <source>Battery: time of charging in the heat</source>
        <translation>Akku: Ladedauer bei Hitze</translation>
    </message>
    <message>
        <source>Battery: mean lowest level</source>
        <translation>Akku: mittlerer niedrigster Stand</translation>
    </message>
    <message>
        <source>Battery: mean highest level</source>
        <translation>Akku: mittlerer höchster Stand</translation>
    </message>
    <message>
        <source>Battery: times nearly empty</source>
        <translation>Akku: Anzahl fast leer</translation>
    </message>
    <message>
        <source>Battery: charge taken</source>
        <translation>Akku: entnommene Ladung</translation>
    </message>
    <message>
        <source>Battery: design capacity</source>
        <translation>Akku: Nennkapazität</translation>
    </message>
    <message>
        <source>Battery: full capacity</source>
        <translation>Akku: volle Kapazität</translation>
    </message>
    <message>
        <source>Battery: disconnections</source>
        <translation>Akku: Trennungen</translation>
    </message>
    <message>
        <source>s</source>
        <translation>s</translation>
    </message>
    <message>
        <source>per min</source>
        <translation>pro min</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>soft</source>
        <translation>weich</translation>
    </message>
    <message>
        <source>medium</source>
        <translation>mittel</translation>
    </message>
    <message>
        <source>hard</source>
        <translation>hart</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keiner</translation>
    </message>
    <message>
        <source>of an unknown kind</source>
        <translation>unbekannter Art</translation>
    </message>
    <message>
        <source>not possible</source>
        <translation>nicht möglich</translation>
    </message>
    <message>
        <source>present</source>
        <translation>vorhanden</translation>
    </message>
    <message>
        <source>absent</source>
        <translation>nicht vorhanden</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>not measured</source>
        <translation>nicht gemessen</translation>
    </message>
    <message>
        <source>%1 is neither a session archive nor a recorded log</source>
        <translation>%1 ist weder ein Sitzungsarchiv noch eine Aufzeichnung</translation>
    </message>
    <message>
        <source>%1 is damaged; what could be read is shown</source>
        <translation>%1 ist beschädigt; gezeigt wird, was lesbar war</translation>
    </message>
    <message>
        <source>%1 cannot be read; is it there and a file?</source>
        <translation>%1 lässt sich nicht lesen; ist es vorhanden und eine Datei?</translation>
    </message>
    <message>
        <source>%1, asked for by the AED</source>
        <translation>%1, vom AED verlangt</translation>
    </message>
    <message>
        <source>Ventilations per minute of the session</source>
        <translation>Beatmungen je Minute der Sitzung</translation>
    </message>
    <message>
        <source>Depth after release, at most</source>
        <translation>Tiefe nach der Entlastung, höchstens</translation>
    </message>
    <message>
        <source>Flow time at least, one rescuer</source>
        <translation>Hands-on-Zeit mindestens, ein Helfer</translation>
    </message>
    <message>
        <source>Flow time at least, two rescuers</source>
        <translation>Hands-on-Zeit mindestens, zwei Helfer</translation>
    </message>
    <message>
        <source>Flow time at least, compressions only</source>
        <translation>Hands-on-Zeit mindestens, nur Kompressionen</translation>
    </message>
    <message>
        <source>below %1 %2</source>
        <translation>unter %1 %2</translation>
    </message>
    <message>
        <source>%1 %2 or more</source>
        <translation>ab %1 %2</translation>
    </message>
    <message>
        <source>scenario paused</source>
        <translation>Szenario angehalten</translation>
    </message>
    <message>
        <source>scenario started</source>
        <translation>Szenario gestartet</translation>
    </message>
    <message>
        <source>shock delivered</source>
        <translation>Schock abgegeben</translation>
    </message>
    <message>
        <source>delayed switching on</source>
        <translation>verzögertes Einschalten</translation>
    </message>
    <message>
        <source>scenario chosen</source>
        <translation>Szenario gewählt</translation>
    </message>
    <message>
        <source>step of the scenario</source>
        <translation>Schritt des Szenarios</translation>
    </message>
    <message>
        <source>battery good</source>
        <translation>Akku gut</translation>
    </message>
    <message>
        <source>battery low</source>
        <translation>Akku schwach</translation>
    </message>
    <message>
        <source>battery empty</source>
        <translation>Akku leer</translation>
    </message>
    <message>
        <source>no failure</source>
        <translation>keine Störung</translation>
    </message>
    <message>
        <source>remote control: scenario</source>
        <translation>Fernbedienung: Szenario</translation>
    </message>
    <message>
        <source>AED connected</source>
        <translation>AED verbunden</translation>
    </message>
    <message>
        <source>Score of the compressions</source>
        <translation>Punkte der Kompressionen</translation>
    </message>
    <message>
        <source>Compressions with hands too low</source>
        <translation>Kompressionen mit zu tief angesetzten Händen</translation>
    </message>
    <message>
        <source>Score of the ventilations</source>
        <translation>Punkte der Beatmungen</translation>
    </message>
    <message>
        <source>Length of all pauses</source>
        <translation>Dauer aller Pausen</translation>
    </message>
    <message>
        <source>Average inflation time</source>
        <translation>Durchschnittliche Inspirationszeit</translation>
    </message>
    <message>
        <source>Compression rate, running mean</source>
        <translation>Kompressionsfrequenz, laufender Mittelwert</translation>
    </message>
    <message>
        <source>%1: missing</source>
        <translation>%1: fehlt</translation>
    </message>
    <message>
        <source>%1 holds nothing that can be salvaged</source>
        <translation>%1 enthält nichts, was sich retten ließe</translation>
    </message>
    <message>
        <source>%1: read as far as it is sound</source>
        <translation>%1: so weit gelesen, wie es heil ist</translation>
    </message>
    <message>
        <source>all left out from line %1 on</source>
        <translation>ab Zeile %1 alles ausgelassen</translation>
    </message>
    <message>
        <source>%1 is damaged in line %2; what stands before it is shown</source>
        <translation>%1 ist in Zeile %2 beschädigt; gezeigt wird, was davor steht</translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) left out</source>
        <translation>
            <numerusform>%n Zeile ausgelassen</numerusform>
            <numerusform>%n Zeilen ausgelassen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is no session any more, if it was one; something may be left</source>
        <translation>%1 ist keine Sitzung mehr, falls es eine war; vielleicht ist etwas übrig</translation>
    </message>
    <message>
        <source>Sum of all reports of pauses</source>
        <translation>Summe aller Pausenmeldungen</translation>
    </message>
    <message>
        <source>Only the first %1 sessions are counted.</source>
        <translation>Nur die ersten %1 Sitzungen zählen.</translation>
    </message>
    <message>
        <source>Sessions that cannot be read: %1</source>
        <translation>Nicht lesbare Sitzungen: %1</translation>
    </message>
    <message>
        <source>Damaged, in part</source>
        <translation>Teils beschädigt</translation>
    </message>
    <message>
        <source>Damaged</source>
        <translation>Beschädigt</translation>
    </message>
    <message>
        <source>The folder %1 is not there.</source>
        <translation>Den Ordner %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>The scan was cancelled; not all sessions may be in the list.</source>
        <translation>Das Lesen wurde abgebrochen; in der Liste fehlen vielleicht Sitzungen.</translation>
    </message>
    <message>
        <source>The learners of %1 are corrected.</source>
        <translation>Die Lernenden von %1 sind berichtigt.</translation>
    </message>
    <message>
        <source>The learners of %1 stay as they were: %2</source>
        <translation>Die Lernenden von %1 bleiben, wie sie waren: %2</translation>
    </message>
    <message numerus="yes">
        <source>%1 is called %2 in %n session(s).</source>
        <translation>
            <numerusform>%1 heißt in %n Sitzung %2.</numerusform>
            <numerusform>%1 heißt in %n Sitzungen %2.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n session(s) still have the name %1. %2</source>
        <translation>
            <numerusform>%n Sitzung hat noch den Namen %1. %2</numerusform>
            <numerusform>%n Sitzungen haben noch den Namen %1. %2</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>cprviewer</name>
    <message>
        <source>%1 cannot be read; is it there and a file?</source>
        <translation>%1 lässt sich nicht lesen; ist es vorhanden und eine Datei?</translation>
    </message>
    <message>
        <source>Perfect</source>
        <translation>Fehlerfrei</translation>
    </message>
    <message>
        <source>Everything as the guidelines want it</source>
        <translation>Alles, wie es die Leitlinien wollen</translation>
    </message>
    <message>
        <source>Trained</source>
        <translation>Geübt</translation>
    </message>
    <message>
        <source>A trained rescuer who slips now and then</source>
        <translation>Ein geübter Helfer mit gelegentlichen Fehlern</translation>
    </message>
    <message>
        <source>Beginner</source>
        <translation>Anfänger</translation>
    </message>
    <message>
        <source>Uneven depth and rate, leaning, miscounting, short pauses; tires</source>
        <translation>Ungleiche Tiefe und Frequenz, Aufstützen, Verzählen, kurze Pausen; ermüdet</translation>
    </message>
    <message>
        <source>Too shallow</source>
        <translation>Zu flach</translation>
    </message>
    <message>
        <source>Nearly all compressions are too shallow</source>
        <translation>Fast alle Kompressionen sind zu flach</translation>
    </message>
    <message>
        <source>Too fast</source>
        <translation>Zu schnell</translation>
    </message>
    <message>
        <source>Nearly all compressions come too fast</source>
        <translation>Fast alle Kompressionen kommen zu schnell</translation>
    </message>
    <message>
        <source>Leaning</source>
        <translation>Aufstützen</translation>
    </message>
    <message>
        <source>The chest is often not released completely</source>
        <translation>Der Brustkorb wird oft nicht voll entlastet</translation>
    </message>
    <message>
        <source>Long pauses</source>
        <translation>Lange Pausen</translation>
    </message>
    <message>
        <source>Long pauses after every cycle</source>
        <translation>Lange Pausen nach jedem Zyklus</translation>
    </message>
    <message>
        <source>Two with an AED</source>
        <translation>Zu zweit mit AED</translation>
    </message>
    <message>
        <source>Two rescuers with an AED: shock, rhythms, remote control</source>
        <translation>Zwei Helfer mit AED: Schock, Rhythmen, Fernbedienung</translation>
    </message>
    <message>
        <source>Bad link</source>
        <translation>Schlechte Verbindung</translation>
    </message>
    <message>
        <source>Lost, late and repeated packets, cut messages</source>
        <translation>Verlorene, verspätete und doppelte Pakete, abgeschnittene Nachrichten</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 lässt sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>%1 is not there any more</source>
        <translation>%1 ist nicht mehr da</translation>
    </message>
    <message>
        <source>%1 was cut or replaced</source>
        <translation>%1 wurde gekürzt oder ersetzt</translation>
    </message>
    <message>
        <source>%1 is damaged in line %2; the session ends there</source>
        <translation>%1 ist in Zeile %2 beschädigt; die Sitzung endet dort</translation>
    </message>
    <message>
        <source>%1 cannot be read as a session</source>
        <translation>%1 ist nicht als Sitzung lesbar</translation>
    </message>
    <message>
        <source>Cancelled: %1 of %2 reports are made.</source>
        <translation>Abgebrochen: %1 von %2 Berichten sind erstellt.</translation>
    </message>
    <message numerus="yes">
        <source>(and %n more)</source>
        <translation>
            <numerusform>(und %n weiterer)</numerusform>
            <numerusform>(und %n weitere)</numerusform>
        </translation>
    </message>
    <message>
        <source>The printer takes no page.</source>
        <translation>Der Drucker nimmt keine Seite an.</translation>
    </message>
    <message numerus="yes">
        <source>%n report(s) printed.</source>
        <translation>
            <numerusform>%n Bericht gedruckt.</numerusform>
            <numerusform>%n Berichte gedruckt.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>manikinlink</name>
    <message>
        <source>local:NAME takes a name of at most 64 letters, digits, dots, underscores and hyphens</source>
        <translation>local:NAME braucht einen Namen aus höchstens 64 Buchstaben, Ziffern, Punkten, Unter- und Bindestrichen</translation>
    </message>
    <message>
        <source>tcp:PORT takes a port from 0 to 65535, on this machine alone; mqtt:HOST:PORT/SITE reaches others</source>
        <translation>tcp:PORT braucht einen Port von 0 bis 65535, nur auf diesem Rechner; mqtt:HOST:PORT/SITE erreicht andere</translation>
    </message>
    <message>
        <source>mqtt:HOST:PORT/SITE takes a host&apos;s name or address, a port and a site of at most 64 letters, digits, dots, underscores and hyphens</source>
        <translation>mqtt:HOST:PORT/SITE braucht Namen oder Adresse eines Rechners, einen Port und einen Ort aus höchstens 64 Buchstaben, Ziffern, Punkten, Unter- und Bindestrichen</translation>
    </message>
    <message>
        <source>an address is tcp:PORT, local:NAME, mqtt:HOST:PORT/SITE or -</source>
        <translation>eine Adresse ist tcp:PORT, local:NAME, mqtt:HOST:PORT/SITE oder -</translation>
    </message>
    <message>
        <source>%1 cannot be listened at: %2</source>
        <translation>auf %1 kann nicht gehört werden: %2</translation>
    </message>
    <message>
        <source>there is no folder for local sockets that is this user&apos;s alone; is XDG_RUNTIME_DIR set?</source>
        <translation>es gibt keinen Ordner für lokale Sockets, der nur diesem Benutzer gehört; ist XDG_RUNTIME_DIR gesetzt?</translation>
    </message>
    <message>
        <source>%1 is listened at by another program</source>
        <translation>auf %1 hört schon ein anderes Programm</translation>
    </message>
    <message>
        <source>somebody</source>
        <translation>jemand</translation>
    </message>
    <message>
        <source>%1 is held by %2</source>
        <translation>%1 gehört gerade %2</translation>
    </message>
    <message>
        <source>%1 manikins are received, and no more can be</source>
        <translation>%1 Puppen werden empfangen, mehr können es nicht sein</translation>
    </message>
    <message>
        <source>the disk has too little room for another session</source>
        <translation>auf der Platte ist zu wenig Platz für eine weitere Sitzung</translation>
    </message>
    <message>
        <source>%1 holds another session</source>
        <translation>%1 enthält eine andere Sitzung</translation>
    </message>
    <message>
        <source>the session has become too long</source>
        <translation>die Sitzung ist zu lang geworden</translation>
    </message>
    <message>
        <source>too many lines that mean nothing, such as: %1</source>
        <translation>zu viele Zeilen ohne Bedeutung, etwa: %1</translation>
    </message>
    <message>
        <source>a record before the first batch</source>
        <translation>ein Eintrag vor dem ersten batch</translation>
    </message>
</context>
<context>
    <name>manikinlog</name>
    <message>
        <source>%1 is in use by another program; wait until that ends, or choose another name for the session</source>
        <translation>%1 wird von einem anderen Programm benutzt; warten, bis es endet, oder einen anderen Namen für die Sitzung wählen</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2; remove it, or choose another name for the session</source>
        <translation>%1 kann nicht gelesen werden: %2; entfernen oder einen anderen Namen für die Sitzung wählen</translation>
    </message>
    <message>
        <source>%1 is no regular file; remove it, or choose another name for the session</source>
        <translation>%1 ist keine gewöhnliche Datei; entfernen oder einen anderen Namen für die Sitzung wählen</translation>
    </message>
    <message>
        <source>%1 cannot be created: %2</source>
        <translation>%1 kann nicht angelegt werden: %2</translation>
    </message>
    <message>
        <source>%1 cannot be opened: %2</source>
        <translation>%1 kann nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>%1 holds a session that was not saved; recover it, or say that it can be discarded</source>
        <translation>%1 enthält eine Sitzung, die nicht gespeichert ist; sie wiederherstellen oder verwerfen lassen</translation>
    </message>
    <message>
        <source>%1 cannot be removed: %2</source>
        <translation>%1 kann nicht entfernt werden: %2</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>%1: a record is left out: %2</source>
        <translation>%1: ein Eintrag wird ausgelassen: %2</translation>
    </message>
    <message>
        <source>; it ends here, as too many records wait</source>
        <translation>; es endet hier, weil zu viele Einträge warten</translation>
    </message>
    <message>
        <source>; its records wait in memory</source>
        <translation>; seine Einträge warten im Speicher</translation>
    </message>
</context>
<context>
    <name>sessionfiles</name>
    <message>
        <source>it does not go with the other members</source>
        <translation>passt nicht zu den anderen Teilen</translation>
    </message>
    <message>
        <source>whole</source>
        <translation>ganz</translation>
    </message>
    <message>
        <source>, so this is not certain</source>
        <translation>, also unsicher</translation>
    </message>
    <message>
        <source>gone; %1; stored as of an empty session</source>
        <translation>verloren; %1; gespeichert wie von einer leeren Sitzung</translation>
    </message>
    <message>
        <source>there is none</source>
        <translation>nicht vorhanden</translation>
    </message>
    <message>
        <source>all %1 %2</source>
        <translation>%2: alle %1</translation>
    </message>
    <message>
        <source>%1 of %2 %3</source>
        <translation>%3: %1 von %2</translation>
    </message>
    <message>
        <source>the first %1 %2</source>
        <translation>%2: die ersten %1</translation>
    </message>
    <message>
        <source>%1 of the first %2 %3</source>
        <translation>%3: %1 der ersten %2</translation>
    </message>
    <message>
        <source>%1 of 2 descriptions</source>
        <translation>%1 von 2 Beschreibungen</translation>
    </message>
    <message>
        <source>the first %1 of %2 samples</source>
        <translation>die ersten %1 von %2 Messwerten</translation>
    </message>
    <message>
        <source>%1 samples</source>
        <translation>%1 Messwerte</translation>
    </message>
    <message>
        <source>events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>it is encrypted</source>
        <translation>verschlüsselt</translation>
    </message>
    <message>
        <source>its checksum is another</source>
        <translation>die Prüfsumme stimmt nicht</translation>
    </message>
    <message>
        <source>its checksum is gone</source>
        <translation>die Prüfsumme fehlt</translation>
    </message>
    <message>
        <source>the archive ends inside it</source>
        <translation>das Archiv endet mittendrin</translation>
    </message>
    <message>
        <source>it unpacks only to byte %1</source>
        <translation>lässt sich nur bis Byte %1 entpacken</translation>
    </message>
    <message>
        <source>it holds more than %1 bytes</source>
        <translation>enthält mehr als %1 Bytes</translation>
    </message>
    <message>
        <source>not all of it is there</source>
        <translation>nicht alles ist vorhanden</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 lässt sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>%1 is saved, but will not be read whole: %2</source>
        <translation>%1 ist gespeichert, lässt sich aber nicht vollständig lesen: %2</translation>
    </message>
    <message>
        <source>the archive cannot be read everywhere: %1</source>
        <translation>das Archiv lässt sich nicht überall lesen: %1</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 lässt sich nicht lesen: %2</translation>
    </message>
    <message>
        <source>it is not what it was before</source>
        <translation>der Inhalt ist nicht mehr derselbe</translation>
    </message>
    <message>
        <source>it can be read only to byte %1: %2</source>
        <translation>lässt sich nur bis Byte %1 lesen: %2</translation>
    </message>
</context>
<context>
    <name>sessionlibrary</name>
    <message>
        <source>it is being written; the next scan reads it</source>
        <translation>sie wird gerade geschrieben; beim nächsten Mal wird sie gelesen</translation>
    </message>
    <message>
        <source>it is no archive that can be opened</source>
        <translation>sie lässt sich nicht als Archiv öffnen</translation>
    </message>
    <message>
        <source>there is no session in it</source>
        <translation>es ist keine Sitzung darin</translation>
    </message>
    <message>
        <source>%1 missing</source>
        <translation>%1 fehlt</translation>
    </message>
    <message>
        <source>%1 is no folder that can be read</source>
        <translation>%1 ist kein lesbarer Ordner</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>the index was another version&apos;s and is made anew</source>
        <translation>das Verzeichnis stammt von einer anderen Version und wird neu angelegt</translation>
    </message>
    <message>
        <source>the index was damaged and is made anew</source>
        <translation>das Verzeichnis war beschädigt und wird neu angelegt</translation>
    </message>
    <message>
        <source>the index cannot be used: %1</source>
        <translation>das Verzeichnis ist nicht benutzbar: %1</translation>
    </message>
    <message>
        <source>it is damaged; recover it first</source>
        <translation>sie ist beschädigt; stellen Sie sie erst wieder her</translation>
    </message>
    <message>
        <source>somebody else is writing it</source>
        <translation>jemand anders schreibt sie gerade</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>it has no learner of that name</source>
        <translation>niemand darin heißt so</translation>
    </message>
</context>
<context>
    <name>sessionplot</name>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>not received</source>
        <translation>nicht empfangen</translation>
    </message>
    <message>
        <source>No learner named</source>
        <translation>Kein Name angegeben</translation>
    </message>
    <message>
        <source>Date not known</source>
        <translation>Datum nicht bekannt</translation>
    </message>
    <message>
        <source>Length %1 %2</source>
        <translation>Dauer %1 %2</translation>
    </message>
    <message>
        <source>Manikin not known</source>
        <translation>Übungspuppe nicht bekannt</translation>
    </message>
    <message>
        <source>Manikin %1</source>
        <translation>Übungspuppe %1</translation>
    </message>
    <message>
        <source>Manikin “%1”</source>
        <translation>Übungspuppe „%1“</translation>
    </message>
    <message>
        <source>Guidelines %1</source>
        <translation>Leitlinien %1</translation>
    </message>
    <message>
        <source>Overall</source>
        <translation>Gesamt</translation>
    </message>
    <message>
        <source>Compressions</source>
        <translation>Kompressionen</translation>
    </message>
    <message>
        <source>Ventilations</source>
        <translation>Beatmungen</translation>
    </message>
    <message>
        <source>Flow time</source>
        <translation>Hands-on-Zeit</translation>
    </message>
    <message>
        <source>Advice</source>
        <translation>Empfehlung</translation>
    </message>
    <message>
        <source>First advice</source>
        <translation>Erste Empfehlung</translation>
    </message>
    <message>
        <source>Second advice</source>
        <translation>Zweite Empfehlung</translation>
    </message>
    <message>
        <source>min. %1</source>
        <translation>mind. %1</translation>
    </message>
    <message>
        <source>Scores and advice: %1</source>
        <translation>Bewertung und Empfehlungen: %1</translation>
    </message>
    <message>
        <source>target</source>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>Depth</source>
        <translation>Tiefe</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volumen</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>release %1</source>
        <translation>entlastet %1</translation>
    </message>
    <message>
        <source>no compressions recorded</source>
        <translation>keine Kompressionen aufgezeichnet</translation>
    </message>
    <message>
        <source>per min</source>
        <translation>pro min</translation>
    </message>
    <message>
        <source>no rates recorded</source>
        <translation>keine Frequenzen aufgezeichnet</translation>
    </message>
    <message>
        <source>ml</source>
        <translation>ml</translation>
    </message>
    <message>
        <source>no ventilations recorded</source>
        <translation>keine Beatmungen aufgezeichnet</translation>
    </message>
    <message>
        <source>target band</source>
        <translation>Zielbereich</translation>
    </message>
    <message>
        <source>value outside the band</source>
        <translation>Wert außerhalb des Bereichs</translation>
    </message>
    <message>
        <source>release line</source>
        <translation>Entlastungslinie</translation>
    </message>
    <message>
        <source>pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>cycle off target</source>
        <translation>Zyklus verfehlt</translation>
    </message>
    <message>
        <source>shock</source>
        <translation>Schock</translation>
    </message>
    <message>
        <source>AED</source>
        <translation>AED</translation>
    </message>
    <message>
        <source>ECG rhythm</source>
        <translation>EKG-Rhythmus</translation>
    </message>
    <message>
        <source>event</source>
        <translation>Ereignis</translation>
    </message>
    <message>
        <source>%1 has to end with .png, .svg or .pdf</source>
        <translation>%1 muss auf .png, .svg oder .pdf enden</translation>
    </message>
    <message>
        <source>A picture cannot be %1x%2 pixels large</source>
        <translation>Ein Bild kann nicht %1x%2 Pixel groß sein</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 lässt sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>The picture cannot be drawn; is there memory for %1x%2 pixels?</source>
        <translation>Das Bild lässt sich nicht zeichnen; reicht der Speicher für %1x%2 Pixel?</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Pauses</source>
        <translation>Pausen</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Cycles</source>
        <translation>Zyklen</translation>
    </message>
    <message>
        <source>target %1:%2</source>
        <translation>Ziel %1:%2</translation>
    </message>
    <message>
        <source>Time, h:mm:ss</source>
        <translation>Zeit, h:mm:ss</translation>
    </message>
    <message>
        <source>Time, m:ss</source>
        <translation>Zeit, m:ss</translation>
    </message>
    <message>
        <source>%1 s, AED</source>
        <translation>%1 s, AED</translation>
    </message>
    <message>
        <source>%1 s not received</source>
        <translation>%1 s nicht empfangen</translation>
    </message>
    <message>
        <source>What the class has to work on</source>
        <translation>Woran der Kurs arbeiten sollte</translation>
    </message>
    <message>
        <source>No fault was found.</source>
        <translation>Es wurde kein Fehler gefunden.</translation>
    </message>
    <message>
        <source>%1 learners</source>
        <translation>%1 Lernenden</translation>
    </message>
    <message>
        <source>Learners, by their last session</source>
        <translation>Lernende nach ihrer letzten Sitzung</translation>
    </message>
    <message>
        <source>Learner</source>
        <translation>Lernende</translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation>Sitzungen</translation>
    </message>
    <message>
        <source>Last session</source>
        <translation>Letzte Sitzung</translation>
    </message>
    <message>
        <source>Score</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Mean of the class</source>
        <translation>Mittel des Kurses</translation>
    </message>
    <message>
        <source>Class</source>
        <translation>Kurs</translation>
    </message>
    <message>
        <source>Learners: %1</source>
        <translation>Lernende: %1</translation>
    </message>
    <message>
        <source>Sessions: %1</source>
        <translation>Sitzungen: %1</translation>
    </message>
    <message>
        <source>Passed: %1</source>
        <translation>Bestanden: %1</translation>
    </message>
    <message>
        <source>Figures are those of each learner&apos;s last session, worked out from the events that were recorded. A dash stands for what was not recorded or not received.</source>
        <translation>Die Werte sind die der jeweils letzten Sitzung, berechnet aus den aufgezeichneten Ereignissen. Ein Strich steht für das, was nicht aufgezeichnet oder nicht empfangen wurde.</translation>
    </message>
    <message>
        <source>the page cannot be drawn</source>
        <translation>die Seite lässt sich nicht zeichnen</translation>
    </message>
    <message>
        <source>Overall score</source>
        <translation>Gesamtbewertung</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Instructor&apos;s name and signature</source>
        <translation>Name und Unterschrift der Kursleitung</translation>
    </message>
    <message>
        <source>The manikin has sent no scores</source>
        <translation>Keine Bewertung empfangen</translation>
    </message>
    <message>
        <source>Passed</source>
        <translation>Bestanden</translation>
    </message>
    <message>
        <source>Not passed</source>
        <translation>Nicht bestanden</translation>
    </message>
    <message>
        <source>%1 (target: %2)</source>
        <translation>%1 (Ziel: %2)</translation>
    </message>
    <message>
        <source>Too little was recorded to say.</source>
        <translation>Es wurde zu wenig aufgezeichnet, um etwas zu sagen.</translation>
    </message>
    <message>
        <source>This was good</source>
        <translation>Das war gut</translation>
    </message>
    <message>
        <source>Nothing is right often enough yet. Keep practising.</source>
        <translation>Noch gelingt nichts oft genug. Weiter üben.</translation>
    </message>
    <message>
        <source>Work on this</source>
        <translation>Daran arbeiten</translation>
    </message>
    <message>
        <source>Nothing: keep it up.</source>
        <translation>Nichts: weiter so.</translation>
    </message>
    <message>
        <source>Figures</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>Target</source>
        <translation>Ziel</translation>
    </message>
    <message>
        <source>The last sessions</source>
        <translation>Die letzten Sitzungen</translation>
    </message>
    <message>
        <source>Instructor&apos;s remark</source>
        <translation>Bemerkung der Kursleitung</translation>
    </message>
    <message>
        <source>Figures are worked out from the events that were recorded, and judged by the session&apos;s guideline set. A dash stands for what was not recorded or not received.</source>
        <translation>Die Werte sind aus den aufgezeichneten Ereignissen berechnet und nach den Leitlinien der Sitzung beurteilt. Ein Strich steht für das, was nicht aufgezeichnet oder nicht empfangen wurde.</translation>
    </message>
    <message>
        <source>The session&apos;s file is damaged. This page shows what could be read.</source>
        <translation>Die Datei der Sitzung ist beschädigt. Diese Seite zeigt, was sich lesen ließ.</translation>
    </message>
    <message>
        <source>mm, mean</source>
        <translation>mm, Mittel</translation>
    </message>
    <message>
        <source>depths, with the median of several</source>
        <translation>Tiefen, mit dem Median mehrerer</translation>
    </message>
    <message>
        <source>none was given</source>
        <translation>keine gegeben</translation>
    </message>
</context>
<context>
    <name>sessionreview</name>
    <message>
        <source>shock</source>
        <translation>Schock</translation>
    </message>
    <message>
        <source>event</source>
        <translation>Ereignis</translation>
    </message>
    <message>
        <source>Too shallow</source>
        <translation>Zu flach</translation>
    </message>
    <message>
        <source>Too deep</source>
        <translation>Zu tief</translation>
    </message>
    <message>
        <source>Incomplete release</source>
        <translation>Unvollständige Entlastung</translation>
    </message>
    <message>
        <source>Hand position</source>
        <translation>Druckpunkt</translation>
    </message>
    <message>
        <source>Press deeper.</source>
        <translation>Tiefer drücken.</translation>
    </message>
    <message>
        <source>Do not press so deep.</source>
        <translation>Weniger tief drücken.</translation>
    </message>
    <message>
        <source>Release the chest completely after each compression.</source>
        <translation>Den Brustkorb nach jeder Kompression ganz entlasten.</translation>
    </message>
    <message>
        <source>Compress at the target rate, neither slower nor faster.</source>
        <translation>In der Zielfrequenz drücken, nicht langsamer und nicht schneller.</translation>
    </message>
    <message>
        <source>Ventilate at the target rate, neither slower nor faster.</source>
        <translation>In der Zielfrequenz beatmen, nicht langsamer und nicht schneller.</translation>
    </message>
    <message>
        <source>Give each ventilation the target volume, neither less nor more.</source>
        <translation>Jede Beatmung mit dem Zielvolumen geben, nicht weniger und nicht mehr.</translation>
    </message>
    <message>
        <source>Give the right number of ventilations in each cycle.</source>
        <translation>In jedem Zyklus die richtige Zahl von Beatmungen geben.</translation>
    </message>
    <message>
        <source>Give the right number of compressions in each cycle.</source>
        <translation>In jedem Zyklus die richtige Zahl von Kompressionen geben.</translation>
    </message>
    <message>
        <source>Keep the pauses in compressions short.</source>
        <translation>Die Pausen zwischen den Kompressionen kurz halten.</translation>
    </message>
    <message>
        <source>Put the hands in the right place on the chest.</source>
        <translation>Die Hände am richtigen Druckpunkt ansetzen.</translation>
    </message>
    <message>
        <source>Give more ventilations before the first compression.</source>
        <translation>Vor der ersten Kompression öfter beatmen.</translation>
    </message>
    <message>
        <source>Give fewer ventilations before the first compression.</source>
        <translation>Vor der ersten Kompression seltener beatmen.</translation>
    </message>
    <message>
        <source>CPR with one rescuer</source>
        <translation>Ein-Helfer-Reanimation</translation>
    </message>
    <message>
        <source>Compressions only</source>
        <translation>Nur Kompressionen</translation>
    </message>
    <message>
        <source>Ventilations only</source>
        <translation>Nur Beatmungen</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>CPR with two rescuers</source>
        <translation>Zwei-Helfer-Reanimation</translation>
    </message>
    <message>
        <source>High performance CPR</source>
        <translation>Hochleistungs-Reanimation</translation>
    </message>
    <message>
        <source>no rhythm</source>
        <translation>kein Rhythmus</translation>
    </message>
    <message>
        <source>VF</source>
        <translation>VF</translation>
    </message>
    <message>
        <source>fast VT</source>
        <translation>schnelle VT</translation>
    </message>
    <message>
        <source>slow VT</source>
        <translation>langsame VT</translation>
    </message>
    <message>
        <source>sinus rhythm</source>
        <translation>Sinusrhythmus</translation>
    </message>
    <message>
        <source>asystole</source>
        <translation>Asystolie</translation>
    </message>
    <message>
        <source>PEA</source>
        <translation>PEA</translation>
    </message>
    <message>
        <source>bradycardia</source>
        <translation>Bradykardie</translation>
    </message>
    <message>
        <source>SVT</source>
        <translation>SVT</translation>
    </message>
    <message>
        <source>remote: show pads</source>
        <translation>Fernbed.: Elektroden</translation>
    </message>
    <message>
        <source>remote: CPR first</source>
        <translation>Fernbed.: erst CPR</translation>
    </message>
    <message>
        <source>AED on</source>
        <translation>AED ein</translation>
    </message>
    <message>
        <source>AED off</source>
        <translation>AED aus</translation>
    </message>
    <message>
        <source>analysing</source>
        <translation>Analyse</translation>
    </message>
    <message>
        <source>shock advised</source>
        <translation>Schock empfohlen</translation>
    </message>
    <message>
        <source>ready to shock</source>
        <translation>schockbereit</translation>
    </message>
    <message>
        <source>no shock advised</source>
        <translation>kein Schock empfohlen</translation>
    </message>
    <message>
        <source>charging</source>
        <translation>lädt</translation>
    </message>
    <message>
        <source>shock cancelled</source>
        <translation>Schock abgebrochen</translation>
    </message>
    <message>
        <source>analysis interrupted</source>
        <translation>Analyse unterbrochen</translation>
    </message>
    <message>
        <source>battery low</source>
        <translation>Akku schwach</translation>
    </message>
    <message>
        <source>movement</source>
        <translation>Bewegung</translation>
    </message>
    <message>
        <source>movement ended</source>
        <translation>Bewegung beendet</translation>
    </message>
    <message>
        <source>AED failure</source>
        <translation>AED-Fehler</translation>
    </message>
    <message>
        <source>pads on</source>
        <translation>Elektroden kleben</translation>
    </message>
    <message>
        <source>pads loose</source>
        <translation>Elektroden lose</translation>
    </message>
    <message>
        <source>remote control</source>
        <translation>Fernbedienung</translation>
    </message>
    <message>
        <source>adult</source>
        <translation>Erwachsener</translation>
    </message>
    <message>
        <source>child</source>
        <translation>Kind</translation>
    </message>
    <message>
        <source>infant</source>
        <translation>Säugling</translation>
    </message>
    <message>
        <source>newborn</source>
        <translation>Neugeborenes</translation>
    </message>
    <message>
        <source>Unknown protocol</source>
        <translation>Unbekanntes Protokoll</translation>
    </message>
    <message>
        <source>Too slow</source>
        <translation>Zu langsam</translation>
    </message>
    <message>
        <source>Too fast</source>
        <translation>Zu schnell</translation>
    </message>
    <message>
        <source>Too little</source>
        <translation>Zu wenig</translation>
    </message>
    <message>
        <source>Too much</source>
        <translation>Zu viel</translation>
    </message>
    <message>
        <source>shock %1 J</source>
        <translation>Schock %1 J</translation>
    </message>
    <message>
        <source>per min</source>
        <translation>pro min</translation>
    </message>
    <message>
        <source>s</source>
        <translation>s</translation>
    </message>
    <message>
        <source>Compressions</source>
        <translation>Kompressionen</translation>
    </message>
    <message>
        <source>Mean depth</source>
        <translation>Mittlere Drucktiefe</translation>
    </message>
    <message>
        <source>Deviation of depth</source>
        <translation>Streuung der Drucktiefe</translation>
    </message>
    <message>
        <source>Correct depth</source>
        <translation>Richtige Drucktiefe</translation>
    </message>
    <message>
        <source>Mean rate</source>
        <translation>Mittlere Frequenz</translation>
    </message>
    <message>
        <source>Deviation of rate</source>
        <translation>Streuung der Frequenz</translation>
    </message>
    <message>
        <source>Correct rate</source>
        <translation>Richtige Frequenz</translation>
    </message>
    <message>
        <source>Mean release depth</source>
        <translation>Mittlere Resttiefe</translation>
    </message>
    <message>
        <source>Deviation of release depth</source>
        <translation>Streuung der Resttiefe</translation>
    </message>
    <message>
        <source>Complete release</source>
        <translation>Vollständige Entlastung</translation>
    </message>
    <message>
        <source>Incomplete release (leaning)</source>
        <translation>Unvollständige Entlastung</translation>
    </message>
    <message>
        <source>Correct hand position</source>
        <translation>Richtiger Druckpunkt</translation>
    </message>
    <message>
        <source>Wrong hand position</source>
        <translation>Falscher Druckpunkt</translation>
    </message>
    <message>
        <source>Depth, rate and release correct</source>
        <translation>Tiefe, Frequenz und Entlastung richtig</translation>
    </message>
    <message>
        <source>Chest compression fraction</source>
        <translation>Anteil der Kompressionszeit</translation>
    </message>
    <message>
        <source>Longest compression pause</source>
        <translation>Längste Kompressionspause</translation>
    </message>
    <message>
        <source>Pauses of more than 10 s</source>
        <translation>Pausen über 10 s</translation>
    </message>
    <message>
        <source>Mean pause for ventilations</source>
        <translation>Mittlere Beatmungspause</translation>
    </message>
    <message>
        <source>Pauses that the AED asked for</source>
        <translation>Vom AED verlangte Pausen</translation>
    </message>
    <message>
        <source>Shocks</source>
        <translation>Schocks</translation>
    </message>
    <message>
        <source>Mean pause before a shock</source>
        <translation>Mittlere Pause vor Schock</translation>
    </message>
    <message>
        <source>Mean pause after a shock</source>
        <translation>Mittlere Pause nach Schock</translation>
    </message>
    <message>
        <source>Mean pause around a shock</source>
        <translation>Mittlere Pause um den Schock</translation>
    </message>
    <message>
        <source>Ventilations</source>
        <translation>Beatmungen</translation>
    </message>
    <message>
        <source>Mean volume</source>
        <translation>Mittleres Volumen</translation>
    </message>
    <message>
        <source>Deviation of volume</source>
        <translation>Streuung des Volumens</translation>
    </message>
    <message>
        <source>Correct volume</source>
        <translation>Richtiges Volumen</translation>
    </message>
    <message>
        <source>Not enough volume</source>
        <translation>Zu wenig Volumen</translation>
    </message>
    <message>
        <source>Too much volume</source>
        <translation>Zu viel Volumen</translation>
    </message>
    <message>
        <source>Cycles counted correctly</source>
        <translation>Richtig gezählte Zyklen</translation>
    </message>
    <message>
        <source>Compressions per cycle</source>
        <translation>Kompressionen pro Zyklus</translation>
    </message>
    <message>
        <source>Compressions asked for per cycle</source>
        <translation>Verlangte Kompressionen pro Zyklus</translation>
    </message>
    <message>
        <source>Ventilations per cycle</source>
        <translation>Beatmungen pro Zyklus</translation>
    </message>
    <message>
        <source>Ventilations asked for per cycle</source>
        <translation>Verlangte Beatmungen pro Zyklus</translation>
    </message>
    <message>
        <source>Shock %1 at %2:%3</source>
        <translation>Schock %1 bei %2:%3</translation>
    </message>
    <message>
        <source>before %1</source>
        <translation>vorher %1</translation>
    </message>
    <message>
        <source>after %1</source>
        <translation>nachher %1</translation>
    </message>
    <message>
        <source>around %1</source>
        <translation>gesamt %1</translation>
    </message>
    <message>
        <source>Stand clear.</source>
        <translation>Abstand halten.</translation>
    </message>
    <message>
        <source>Continue compressions.</source>
        <translation>Weiter drücken.</translation>
    </message>
    <message>
        <source>Go on, keep the pause short.</source>
        <translation>Weitermachen, die Pause kurz halten.</translation>
    </message>
    <message>
        <source>Press faster.</source>
        <translation>Schneller drücken.</translation>
    </message>
    <message>
        <source>Press slower.</source>
        <translation>Langsamer drücken.</translation>
    </message>
    <message>
        <source>Ventilate slower.</source>
        <translation>Langsamer beatmen.</translation>
    </message>
    <message>
        <source>Give less air in each ventilation.</source>
        <translation>Bei jeder Beatmung weniger Luft geben.</translation>
    </message>
    <message>
        <source>Ventilate faster.</source>
        <translation>Schneller beatmen.</translation>
    </message>
    <message>
        <source>Give more air in each ventilation.</source>
        <translation>Bei jeder Beatmung mehr Luft geben.</translation>
    </message>
    <message>
        <source>Well done, keep going.</source>
        <translation>Gut so, weiter.</translation>
    </message>
    <message>
        <source>CPR asked for</source>
        <translation>HLW verlangt</translation>
    </message>
    <message>
        <source>below %1 %</source>
        <translation>unter %1 %</translation>
    </message>
    <message>
        <source>at least %1 %</source>
        <translation>mindestens %1 %</translation>
    </message>
    <message>
        <source>basic, from %1 %</source>
        <translation>Grundstufe ab %1 %</translation>
    </message>
    <message>
        <source>advanced, from %1 %</source>
        <translation>Fortgeschritten ab %1 %</translation>
    </message>
    <message>
        <source>Pause of %1 s</source>
        <translation>Pause von %1 s</translation>
    </message>
    <message>
        <source>Ventilated too fast</source>
        <translation>Zu schnell beatmet</translation>
    </message>
    <message>
        <source>Too much air</source>
        <translation>Zu viel Luft</translation>
    </message>
    <message>
        <source>Ventilated too slowly</source>
        <translation>Zu langsam beatmet</translation>
    </message>
    <message>
        <source>Too little air</source>
        <translation>Zu wenig Luft</translation>
    </message>
    <message>
        <source>Hands</source>
        <translation>Hände</translation>
    </message>
    <message>
        <source>Depth</source>
        <translation>Tiefe</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Release</source>
        <translation>Entlastung</translation>
    </message>
    <message>
        <source>Ventilation</source>
        <translation>Beatmung</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>AED</source>
        <translation>AED</translation>
    </message>
    <message>
        <source>Teamwork</source>
        <translation>Teamarbeit</translation>
    </message>
    <message>
        <source>Well done</source>
        <translation>Gut gemacht</translation>
    </message>
    <message>
        <source>%1, %2 times</source>
        <translation>%1, %2-mal</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Correct ventilation rate</source>
        <translation>Richtige Beatmungsfrequenz</translation>
    </message>
    <message>
        <source>The pauses in compressions were short.</source>
        <translation>Die Pausen zwischen den Kompressionen waren kurz.</translation>
    </message>
    <message>
        <source>Pressed to the right depth.</source>
        <translation>Richtig tief gedrückt.</translation>
    </message>
    <message>
        <source>Pressed at the right rate.</source>
        <translation>In der richtigen Frequenz gedrückt.</translation>
    </message>
    <message>
        <source>Released the chest completely.</source>
        <translation>Den Brustkorb ganz entlastet.</translation>
    </message>
    <message>
        <source>Hands in the right place.</source>
        <translation>Die Hände waren am richtigen Druckpunkt.</translation>
    </message>
    <message>
        <source>Ventilated at the right rate.</source>
        <translation>In der richtigen Frequenz beatmet.</translation>
    </message>
    <message>
        <source>Gave the right amount of air.</source>
        <translation>Die richtige Menge Luft gegeben.</translation>
    </message>
    <message>
        <source>Counted compressions and ventilations correctly.</source>
        <translation>Kompressionen und Beatmungen richtig gezählt.</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>höchstens %1</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Give the right numbers of compressions and ventilations in each cycle.</source>
        <translation>In jedem Zyklus die richtige Zahl von Kompressionen und Beatmungen geben.</translation>
    </message>
    <message>
        <source>Overall score</source>
        <translation>Gesamtbewertung</translation>
    </message>
    <message>
        <source>Compression score</source>
        <translation>Bewertung der Kompressionen</translation>
    </message>
    <message>
        <source>Ventilation score</source>
        <translation>Bewertung der Beatmungen</translation>
    </message>
    <message>
        <source>Flow time</source>
        <translation>Hands-on-Zeit</translation>
    </message>
    <message>
        <source>as good</source>
        <translation>gleich gut</translation>
    </message>
    <message>
        <source>better</source>
        <translation>besser</translation>
    </message>
    <message>
        <source>worse</source>
        <translation>schlechter</translation>
    </message>
    <message>
        <source>other rules</source>
        <translation>andere Regeln</translation>
    </message>
    <message>
        <source>Continue ventilations.</source>
        <translation>Weiter beatmen.</translation>
    </message>
</context>
</TS>
