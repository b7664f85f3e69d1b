<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Link</name>
    <message>
        <source>Held by another program</source>
        <translation>Von einem anderen Programm belegt</translation>
    </message>
    <message>
        <source>Not connected</source>
        <translation>Nicht verbunden</translation>
    </message>
    <message>
        <source>Connecting …</source>
        <translation>Verbindung wird aufgebaut …</translation>
    </message>
    <message>
        <source>The instrument is being asked who it is.</source>
        <translation>Das Gerät wird nach seiner Kennung gefragt.</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>The instrument answers.</source>
        <translation>Das Gerät antwortet.</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>Unterbrochen</translation>
    </message>
    <message>
        <source>A request has failed. The link is being brought back.</source>
        <translation>Eine Anfrage ist gescheitert. Die Verbindung wird wiederhergestellt.</translation>
    </message>
    <message>
        <source>Connection lost</source>
        <translation>Verbindung verloren</translation>
    </message>
    <message>
        <source>The instrument cannot be reached. It comes back by itself when it answers.</source>
        <translation>Das Gerät ist nicht erreichbar. Sobald es antwortet, geht es von selbst weiter.</translation>
    </message>
    <message>
        <source>Waits for firmware</source>
        <translation>Wartet auf Firmware</translation>
    </message>
    <message>
        <source>The instrument is in update mode and measures nothing.</source>
        <translation>Das Gerät ist im Update-Modus und misst nichts.</translation>
    </message>
</context>
<context>
    <name>Pages</name>
    <message>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>Measure</source>
        <translation>Messen</translation>
    </message>
    <message>
        <source>Sequence</source>
        <translation>Prüfplan</translation>
    </message>
    <message>
        <source>Service</source>
        <translation>Service</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Fehler</translation>
    </message>
</context>
<context>
    <name>Panel::ChoiceField</name>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
</context>
<context>
    <name>Panel::Closing</name>
    <message>
        <source>Closing …</source>
        <translation>Wird beendet …</translation>
    </message>
    <message>
        <source>Whatever is under way is being ended. The window closes when that is done.</source>
        <translation>Was noch läuft, wird beendet. Danach schließt sich das Fenster.</translation>
    </message>
    <message>
        <source>The instrument may still run</source>
        <translation>Das Gerät läuft vielleicht noch</translation>
    </message>
    <message>
        <source>It is not confirmed that the instrument has stopped. Treat it as if it still ran: do not touch the appliance, and cut its mains supply.</source>
        <translation>Es ist nicht bestätigt, dass das Gerät gestoppt hat. Behandeln Sie es, als liefe es noch: Prüfling nicht berühren, Netzversorgung trennen.</translation>
    </message>
    <message>
        <source>Stop again</source>
        <translation>Erneut stoppen</translation>
    </message>
    <message>
        <source>Close all the same</source>
        <translation>Trotzdem schließen</translation>
    </message>
    <message>
        <source>The instrument is being asked to stop.</source>
        <translation>Das Gerät wird aufgefordert zu stoppen.</translation>
    </message>
    <message>
        <source>Firmware is being sent, which must not be ended in the middle: do not switch the instrument off. The window closes when it is installed.</source>
        <translation>Firmware wird gesendet, was nicht mittendrin enden darf: Schalten Sie das Gerät nicht aus. Das Fenster schließt, wenn sie installiert ist.</translation>
    </message>
</context>
<context>
    <name>Panel::ConnectionPage</name>
    <message>
        <source>Instrument</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Leitung</translation>
    </message>
    <message>
        <source>%1, build %2</source>
        <translation>%1, Build %2</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerätetyp</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Modus</translation>
    </message>
    <message>
        <source>Clock, as read</source>
        <translation>Uhr, wie gelesen</translation>
    </message>
    <message>
        <source>Calibrated</source>
        <translation>Kalibriert</translation>
    </message>
    <message>
        <source>Good answers</source>
        <translation>Gute Antworten</translation>
    </message>
    <message>
        <source>Sent once more</source>
        <translation>Wiederholt</translation>
    </message>
    <message>
        <source>Damaged answers</source>
        <translation>Beschädigt</translation>
    </message>
    <message>
        <source>No answer</source>
        <translation>Ohne Antwort</translation>
    </message>
    <message>
        <source>Refused</source>
        <translation>Abgelehnt</translation>
    </message>
    <message>
        <source>Brought back</source>
        <translation>Neu verbunden</translation>
    </message>
</context>
<context>
    <name>Panel::DateCard</name>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Stellen</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
</context>
<context>
    <name>Panel::Dialog</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>Panel::ErrorsPage</name>
    <message>
        <source>Nothing has gone wrong so far.</source>
        <translation>Bisher ist nichts fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Forget all</source>
        <translation>Alle vergessen</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Fehler</translation>
    </message>
</context>
<context>
    <name>Panel::FailureCard</name>
    <message>
        <source>Likely causes:</source>
        <translation>Mögliche Ursachen:</translation>
    </message>
    <message>
        <source>What to do:</source>
        <translation>Was zu tun ist:</translation>
    </message>
</context>
<context>
    <name>Panel::FileChooser</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Use this folder</source>
        <translation>Diesen Ordner verwenden</translation>
    </message>
    <message>
        <source>The folder %1 cannot be read.</source>
        <translation>Der Ordner %1 ist nicht lesbar.</translation>
    </message>
</context>
<context>
    <name>Panel::Files</name>
    <message>
        <source>The file %1 was not written: %2.</source>
        <translation>Die Datei %1 wurde nicht geschrieben: %2.</translation>
    </message>
    <message>
        <source>Choose another folder or another name.</source>
        <translation>Wählen Sie einen anderen Ordner oder einen anderen Namen.</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>it has more than %1 bytes</source>
        <translation>sie hat mehr als %1 Bytes</translation>
    </message>
    <message>
        <source>there is one with this name already</source>
        <translation>es gibt schon eine mit diesem Namen</translation>
    </message>
</context>
<context>
    <name>Panel::FunctionPage</name>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Hold to measure</source>
        <translation>Zum Messen halten</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>noch %1</translation>
    </message>
</context>
<context>
    <name>Panel::Keypad</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Panel::Log</name>
    <message>
        <source>The log %1 cannot be read: %2.</source>
        <translation>Das Protokoll %1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>Choose another file.</source>
        <translation>Wählen Sie eine andere Datei.</translation>
    </message>
    <message>
        <source>it is not a file that may be read</source>
        <translation>es ist keine Datei, die gelesen werden darf</translation>
    </message>
    <message>
        <source>it has no line of the library&apos;s log</source>
        <translation>es hat keine Zeile der Bibliothek</translation>
    </message>
</context>
<context>
    <name>Panel::LogModel</name>
    <message>
        <source>Time (UTC)</source>
        <translation>Zeit (UTC)</translation>
    </message>
    <message>
        <source>Request</source>
        <translation>Anfrage</translation>
    </message>
    <message>
        <source>In words</source>
        <translation>In Worten</translation>
    </message>
</context>
<context>
    <name>Panel::LogPage</name>
    <message>
        <source>Live</source>
        <translation>Live</translation>
    </message>
    <message>
        <source>Open …</source>
        <translation>Öffnen …</translation>
    </message>
    <message>
        <source>Only rows with …</source>
        <translation>Nur Zeilen mit …</translation>
    </message>
    <message>
        <source>Open a recorded log</source>
        <translation>Ein aufgezeichnetes Protokoll öffnen</translation>
    </message>
    <message>
        <source>Reading %1 …</source>
        <translation>%1 wird gelesen …</translation>
    </message>
    <message>
        <source>Everything as a table</source>
        <translation>Alles als Tabelle</translation>
    </message>
    <message>
        <source>Plot of %1</source>
        <translation>Kurven von %1</translation>
    </message>
    <message>
        <source>These are the last %1 rows of the log.</source>
        <translation>Dies sind die letzten %1 Zeilen des Protokolls.</translation>
    </message>
</context>
<context>
    <name>Panel::MainWindow</name>
    <message>
        <source>Light / dark</source>
        <translation>Hell / dunkel</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>⚡  High voltage. Do not touch the appliance.</source>
        <translation>⚡  Hochspannung. Prüfling nicht berühren.</translation>
    </message>
    <message>
        <source>Stop (Esc)</source>
        <translation>Stopp (Esc)</translation>
    </message>
</context>
<context>
    <name>Panel::MainsCard</name>
    <message>
        <source>Mains, in the last minute</source>
        <translation>Netz, in der letzten Minute</translation>
    </message>
</context>
<context>
    <name>Panel::NumberField</name>
    <message>
        <source>No limit</source>
        <translation>Unbegrenzt</translation>
    </message>
</context>
<context>
    <name>Panel::Plan</name>
    <message>
        <source>&quot;%1&quot; is there twice.</source>
        <translation>„%1“ steht zweimal da.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not known here; it can be %2.</source>
        <translation>„%1“ ist hier nicht bekannt; möglich ist %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be a text that is not empty.</source>
        <translation>„%1“ muss ein Text sein, der nicht leer ist.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be a number.</source>
        <translation>„%1“ muss eine Zahl sein.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be an object in braces.</source>
        <translation>„%1“ muss ein Objekt in geschweiften Klammern sein.</translation>
    </message>
    <message>
        <source>The plan %1 cannot be read: %2.</source>
        <translation>Der Prüfplan %1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>Check its path and its permissions.</source>
        <translation>Prüfen Sie seinen Pfad und seine Rechte.</translation>
    </message>
    <message>
        <source>The plan %1 is damaged, line %2: %3</source>
        <translation>Der Prüfplan %1 ist beschädigt, Zeile %2: %3</translation>
    </message>
    <message>
        <source>Mend the file; nothing is measured with it.</source>
        <translation>Berichtigen Sie die Datei; mit ihr wird nichts gemessen.</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>at least %1</source>
        <translation>mindestens %1</translation>
    </message>
    <message>
        <source>at most %1</source>
        <translation>höchstens %1</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>nicht vorhanden</translation>
    </message>
    <message>
        <source>%1 is %2 and has to be %3.</source>
        <translation>%1 ist %2; gefordert: %3.</translation>
    </message>
    <message>
        <source>&quot;version&quot; has to be %1.</source>
        <translation>„version“ muss %1 sein.</translation>
    </message>
    <message>
        <source>&quot;onFailedStep&quot; has to be &quot;stop&quot; or &quot;continue&quot;.</source>
        <translation>„onFailedStep“ muss „stop“ oder „continue“ sein.</translation>
    </message>
    <message>
        <source>&quot;steps&quot; has to be a list of at least one step.</source>
        <translation>„steps“ muss eine Liste mit mindestens einem Schritt sein.</translation>
    </message>
    <message>
        <source>A plan is an object in braces.</source>
        <translation>Ein Prüfplan ist ein Objekt in geschweiften Klammern.</translation>
    </message>
    <message>
        <source>not measured yet</source>
        <translation>noch nicht gemessen</translation>
    </message>
    <message>
        <source>hold the button to measure</source>
        <translation>zum Messen Taste halten</translation>
    </message>
    <message>
        <source>measuring</source>
        <translation>misst</translation>
    </message>
    <message>
        <source>measured</source>
        <translation>gemessen</translation>
    </message>
    <message>
        <source>passed</source>
        <translation>bestanden</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>nicht bestanden</translation>
    </message>
    <message>
        <source>not completed</source>
        <translation>nicht beendet</translation>
    </message>
    <message>
        <source>Measured, without limits</source>
        <translation>Gemessen, ohne Grenzwerte</translation>
    </message>
    <message>
        <source>Passed</source>
        <translation>Bestanden</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Nicht bestanden</translation>
    </message>
    <message>
        <source>Not complete</source>
        <translation>Unvollständig</translation>
    </message>
    <message>
        <source>The instrument is confirmed to have stopped.</source>
        <translation>Es ist bestätigt, dass das Gerät gestoppt hat.</translation>
    </message>
    <message>
        <source>It is NOT confirmed that the instrument has stopped.</source>
        <translation>Es ist NICHT bestätigt, dass das Gerät gestoppt hat.</translation>
    </message>
    <message>
        <source>A step of a plan has to end by itself: give &quot;%1&quot; a number.</source>
        <translation>Ein Schritt eines Prüfplans muss von selbst enden: Geben Sie „%1“ eine Zahl.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs &quot;min&quot;, &quot;max&quot; or both.</source>
        <translation>„%1“ braucht „min“, „max“ oder beides.</translation>
    </message>
    <message>
        <source>&quot;min&quot; is greater than &quot;max&quot;.</source>
        <translation>„min“ ist größer als „max“.</translation>
    </message>
</context>
<context>
    <name>Panel::ReadingPlot</name>
    <message>
        <source>All</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
</context>
<context>
    <name>Panel::Report</name>
    <message>
        <source>Instrument</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>Calibrated on</source>
        <translation>Kalibriert am</translation>
    </message>
    <message>
        <source>Begun</source>
        <translation>Begonnen</translation>
    </message>
    <message>
        <source>Ended</source>
        <translation>Beendet</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Readings</source>
        <translation>Messwerte</translation>
    </message>
    <message>
        <source>No reading for %1 s after %2 s.</source>
        <translation>Kein Messwert für %1 s nach %2 s.</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>Messwert</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Letzter</translation>
    </message>
    <message>
        <source>Lowest</source>
        <translation>Kleinster</translation>
    </message>
    <message>
        <source>Highest</source>
        <translation>Größter</translation>
    </message>
    <message>
        <source>Has to be</source>
        <translation>Gefordert</translation>
    </message>
    <message>
        <source>Every reading</source>
        <translation>Jeder Messwert</translation>
    </message>
    <message>
        <source>Overview</source>
        <translation>Übersicht</translation>
    </message>
</context>
<context>
    <name>Panel::ReportBar</name>
    <message>
        <source>Write report</source>
        <translation>Bericht schreiben</translation>
    </message>
    <message>
        <source>Folder of the reports</source>
        <translation>Ordner der Berichte</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>Geschrieben: %1</translation>
    </message>
    <message>
        <source>Folder …</source>
        <translation>Ordner …</translation>
    </message>
    <message>
        <source>Writing …</source>
        <translation>Wird geschrieben …</translation>
    </message>
</context>
<context>
    <name>Panel::ResultCard</name>
    <message>
        <source>Stop again</source>
        <translation>Erneut stoppen</translation>
    </message>
    <message>
        <source>The instrument is confirmed to have stopped.</source>
        <translation>Es ist bestätigt, dass das Gerät gestoppt hat.</translation>
    </message>
    <message>
        <source>It is not confirmed that the instrument has stopped. Do not touch the appliance, and cut its mains supply.</source>
        <translation>Es ist nicht bestätigt, dass das Gerät gestoppt hat. Prüfling nicht berühren, Netzversorgung trennen.</translation>
    </message>
</context>
<context>
    <name>Panel::SequencePage</name>
    <message>
        <source>Open …</source>
        <translation>Öffnen …</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Hold to measure</source>
        <translation>Zum Messen halten</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Open a test plan</source>
        <translation>Einen Prüfplan öffnen</translation>
    </message>
    <message>
        <source>Step %1 of %2</source>
        <translation>Schritt %1 von %2</translation>
    </message>
</context>
<context>
    <name>Panel::ServicePage</name>
    <message>
        <source>Clock</source>
        <translation>Uhr</translation>
    </message>
    <message>
        <source>Calibrated on</source>
        <translation>Kalibriert am</translation>
    </message>
    <message>
        <source>Restart the instrument</source>
        <translation>Das Gerät neu starten</translation>
    </message>
    <message>
        <source>The clock is set.</source>
        <translation>Die Uhr ist gestellt.</translation>
    </message>
    <message>
        <source>The date of the calibration is set.</source>
        <translation>Das Datum der Kalibrierung ist gestellt.</translation>
    </message>
    <message>
        <source>The instrument has restarted.</source>
        <translation>Das Gerät ist neu gestartet.</translation>
    </message>
</context>
<context>
    <name>Panel::StepTable</name>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Readings</source>
        <translation>Messwerte</translation>
    </message>
</context>
<context>
    <name>Panel::Tiles</name>
    <message>
        <source>one result</source>
        <translation>ein Ergebnis</translation>
    </message>
    <message>
        <source>continuous</source>
        <translation>fortlaufend</translation>
    </message>
    <message>
        <source>⚡ high voltage</source>
        <translation>⚡ Hochspannung</translation>
    </message>
    <message>
        <source>one test</source>
        <translation>eine Prüfung</translation>
    </message>
</context>
<context>
    <name>Panel::UpdateCard</name>
    <message>
        <source>Version before: %1</source>
        <translation>Version vorher: %1</translation>
    </message>
    <message>
        <source>version now: %1</source>
        <translation>Version jetzt: %1</translation>
    </message>
    <message>
        <source>sector %1 of %2</source>
        <translation>Sektor %1 von %2</translation>
    </message>
    <message>
        <source>about %1 left</source>
        <translation>noch etwa %1</translation>
    </message>
    <message>
        <source>Update the firmware</source>
        <translation>Die Firmware erneuern</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Abbild</translation>
    </message>
    <message>
        <source>Confirmation</source>
        <translation>Bestätigung</translation>
    </message>
    <message>
        <source>Choose …</source>
        <translation>Wählen …</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; cannot be read: %2.</source>
        <translation>Die Datei „%1“ kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>Choose the file again.</source>
        <translation>Wählen Sie die Datei noch einmal.</translation>
    </message>
    <message>
        <source>The firmware is installed.</source>
        <translation>Die Firmware ist installiert.</translation>
    </message>
</context>
<context>
    <name>Words</name>
    <message>
        <source>Connection lost</source>
        <translation>Verbindung verloren</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation>Kalibrierung</translation>
    </message>
    <message>
        <source>Mode 2</source>
        <translation>Modus 2</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Update</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message>
        <source>Ending what still runs</source>
        <translation>Beendet, was noch läuft</translation>
    </message>
    <message>
        <source>Preparing</source>
        <translation>Bereitet vor</translation>
    </message>
    <message>
        <source>Checking the object</source>
        <translation>Kontrolliert den Prüfling</translation>
    </message>
    <message>
        <source>Waiting for the mains</source>
        <translation>Wartet auf das Netz</translation>
    </message>
    <message>
        <source>Starting</source>
        <translation>Startet</translation>
    </message>
    <message>
        <source>Measuring</source>
        <translation>Misst</translation>
    </message>
    <message>
        <source>Stopping</source>
        <translation>Stoppt</translation>
    </message>
    <message>
        <source>Cleaning up</source>
        <translation>Räumt auf</translation>
    </message>
    <message>
        <source>Confirming the stop</source>
        <translation>Bestätigt den Stopp</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Schreibt</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>Liest</translation>
    </message>
    <message>
        <source>Restarting</source>
        <translation>Startet neu</translation>
    </message>
    <message>
        <source>Changing to update mode</source>
        <translation>Wechselt in den Update-Modus</translation>
    </message>
    <message>
        <source>Beginning the update</source>
        <translation>Beginnt das Update</translation>
    </message>
    <message>
        <source>Sending the firmware</source>
        <translation>Sendet die Firmware</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Under way</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>Abgeschlossen</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Gescheitert</translation>
    </message>
    <message>
        <source>Aborted</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Completed with gaps</source>
        <translation>Abgeschlossen mit Lücken</translation>
    </message>
</context>
</TS>
