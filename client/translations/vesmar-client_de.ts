<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>VesmarClient</name>
    <message>
        <source>RLN</source>
        <translation>RLN</translation>
    </message>
    <message>
        <source>IEC</source>
        <translation>IEC</translation>
    </message>
    <message>
        <source>Protective-earth resistance</source>
        <translation>Schutzleiter­widerstand</translation>
    </message>
    <message>
        <source>Insulation resistance</source>
        <translation>Isolations­widerstand</translation>
    </message>
    <message>
        <source>Substitute leakage current</source>
        <translation>Ersatz­ableitstrom</translation>
    </message>
    <message>
        <source>Protective-conductor current</source>
        <translation>Schutzleiter­strom</translation>
    </message>
    <message>
        <source>Differential current</source>
        <translation>Differenzstrom</translation>
    </message>
    <message>
        <source>Touch current</source>
        <translation>Berührungs­strom</translation>
    </message>
    <message>
        <source>Power</source>
        <translation>Leistung</translation>
    </message>
    <message>
        <source>High-voltage test</source>
        <translation>Hochspannungs­prüfung</translation>
    </message>
    <message>
        <source>Residual-current device: Ub/Re, or Ia/Ta</source>
        <translation>FI-Schutz­schalter: Ub/Re oder Ia/Ta</translation>
    </message>
    <message>
        <source>Residual-current device, IEC variant</source>
        <translation>FI-Schutz­schalter, IEC-Variante</translation>
    </message>
    <message>
        <source>Mains</source>
        <translation>Netz</translation>
    </message>
    <message>
        <source>The instrument&apos;s number</source>
        <translation>Nummer, wie das Gerät sie kennt</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Modus</translation>
    </message>
    <message>
        <source>What is done</source>
        <translation>Was getan wird</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Phase</source>
        <translation>Phase</translation>
    </message>
    <message>
        <source>Current</source>
        <translation>Strom</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>How long to measure</source>
        <translation>Wie lange gemessen wird</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>Verfahren</translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation>Spannung</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Time offset</source>
        <translation>Zeitzuschlag</translation>
    </message>
    <message>
        <source>Added to the time for the voltage to rise</source>
        <translation>Zuschlag für den Anstieg der Spannung</translation>
    </message>
    <message>
        <source>Re</source>
        <translation>Re</translation>
    </message>
    <message>
        <source>Measure Re first</source>
        <translation>Zuerst Re messen</translation>
    </message>
    <message>
        <source>For ia-ta-1 and ia-ta-2: run a ub-re test first, and take its Re</source>
        <translation>Für Ia/Ta: zuerst Ub/Re prüfen und dessen Re verwenden</translation>
    </message>
    <message>
        <source>Clean-up time</source>
        <translation>Aufräumzeit</translation>
    </message>
    <message>
        <source>How long the instrument is left alone for a clean-up</source>
        <translation>Wie lange das Gerät zum Aufräumen in Ruhe gelassen wird</translation>
    </message>
    <message>
        <source>Swap L and N</source>
        <translation>L und N tauschen</translation>
    </message>
    <message>
        <source>Swap line and neutral</source>
        <translation>Außenleiter und Neutralleiter tauschen</translation>
    </message>
    <message>
        <source>Ub/Re</source>
        <translation>Ub/Re</translation>
    </message>
    <message>
        <source>Ia/Ta, first test</source>
        <translation>Ia/Ta, erste Prüfung</translation>
    </message>
    <message>
        <source>Ia/Ta, second test</source>
        <translation>Ia/Ta, zweite Prüfung</translation>
    </message>
    <message>
        <source>Clean-up</source>
        <translation>Aufräumen</translation>
    </message>
    <message>
        <source>The file of units %1 cannot be read: %2.</source>
        <translation>Die Einheitendatei %1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>Check its path and its permissions.</source>
        <translation>Prüfen Sie Pfad und Rechte.</translation>
    </message>
    <message>
        <source>The file of units %1 is damaged, line %2: %3.</source>
        <translation>Die Einheitendatei %1 ist beschädigt, Zeile %2: %3.</translation>
    </message>
    <message>
        <source>Mend the file; nothing is taken from it until then.</source>
        <translation>Berichtigen Sie die Datei; bis dahin wird nichts aus ihr verwendet.</translation>
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
        <source>&quot;%1&quot; is there twice</source>
        <translation>„%1“ kommt zweimal vor</translation>
    </message>
    <message>
        <source>there is no function &quot;%1&quot;</source>
        <translation>es gibt keine Funktion „%1“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be an object of readings</source>
        <translation>„%1“ muss ein Objekt mit Messwerten sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no reading &quot;%2&quot;</source>
        <translation>„%1“ hat keinen Messwert „%2“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be an object with &quot;unit&quot; and &quot;decimals&quot;</source>
        <translation>„%1“ muss ein Objekt mit „unit“ und „decimals“ sein</translation>
    </message>
    <message>
        <source>&quot;unit&quot; has to be a text of 1 to %1 characters</source>
        <translation>„unit“ muss ein Text mit 1 bis %1 Zeichen sein</translation>
    </message>
    <message>
        <source>&quot;decimals&quot; has to be a whole number from 0 to %1</source>
        <translation>„decimals“ muss eine ganze Zahl von 0 bis %1 sein</translation>
    </message>
    <message>
        <source>a reading has &quot;unit&quot; and &quot;decimals&quot;, and no &quot;%1&quot;</source>
        <translation>ein Messwert hat „unit“ und „decimals“, aber kein „%1“</translation>
    </message>
    <message>
        <source>it has to be an object of functions</source>
        <translation>es muss ein Objekt mit Funktionen sein</translation>
    </message>
    <message>
        <source>from %1 to %2</source>
        <translation>von %1 bis %2</translation>
    </message>
    <message>
        <source>It is one of %1.</source>
        <translation>Möglich ist: %1.</translation>
    </message>
    <message>
        <source>It is a whole number %1.</source>
        <translation>Es ist eine ganze Zahl %1.</translation>
    </message>
    <message>
        <source>It is a number %1.</source>
        <translation>Es ist eine Zahl %1.</translation>
    </message>
    <message>
        <source>It is true or false.</source>
        <translation>Es ist wahr oder falsch.</translation>
    </message>
    <message>
        <source>There is no function &quot;%1&quot;; it is one of %2.</source>
        <translation>Es gibt keine Funktion „%1“; möglich ist: %2.</translation>
    </message>
    <message>
        <source>%1 has no options.</source>
        <translation>%1 hat keine Optionen.</translation>
    </message>
    <message>
        <source>%1 has no such option; it has %2.</source>
        <translation>%1 hat diese Option nicht; möglich ist: %2.</translation>
    </message>
    <message>
        <source>The test ub-re measures Re itself; leave this option out.</source>
        <translation>Die Prüfung Ub/Re misst Re selbst; lassen Sie diese Option weg.</translation>
    </message>
    <message>
        <source>Not together with with-ub-re, which measures Re.</source>
        <translation>Nicht zusammen mit „Zuerst Re messen“.</translation>
    </message>
    <message>
        <source>It has to be given.</source>
        <translation>Bitte auswählen.</translation>
    </message>
    <message>
        <source>The instrument did not take the date: it reports another.</source>
        <translation>Das Gerät hat das Datum nicht übernommen: Es meldet ein anderes.</translation>
    </message>
    <message>
        <source>Set it again. If that does not help, have the instrument repaired.</source>
        <translation>Stellen Sie es erneut. Hilft das nicht, lassen Sie das Gerät reparieren.</translation>
    </message>
    <message>
        <source>The instrument has not reported the date as set.</source>
        <translation>Das Gerät hat das gestellte Datum nicht gemeldet.</translation>
    </message>
    <message>
        <source>Read the date, and set it again.</source>
        <translation>Lesen Sie das Datum und stellen Sie es erneut.</translation>
    </message>
    <message>
        <source>Another job is under way.</source>
        <translation>Es läuft schon ein anderer Auftrag.</translation>
    </message>
    <message>
        <source>Wait until it has finished, or abort it.</source>
        <translation>Warten Sie, bis er fertig ist, oder brechen Sie ihn ab.</translation>
    </message>
    <message>
        <source>The instrument is in update mode (3) and waits for firmware.</source>
        <translation>Das Gerät ist im Update-Modus (3) und wartet auf Firmware.</translation>
    </message>
    <message>
        <source>Send it its firmware, or restart it.</source>
        <translation>Senden Sie ihm seine Firmware oder starten Sie es neu.</translation>
    </message>
    <message>
        <source>The link to the instrument is not up.</source>
        <translation>Die Verbindung zum Gerät steht nicht.</translation>
    </message>
    <message>
        <source>Open the line, check cable and power, and wait until the link is up.</source>
        <translation>Öffnen Sie die Leitung, prüfen Sie Kabel und Versorgung und warten Sie, bis die Verbindung steht.</translation>
    </message>
    <message>
        <source>Check cable and power, and try again.</source>
        <translation>Prüfen Sie Kabel und Versorgung und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The link to it was lost.</source>
        <translation>Die Verbindung ist verloren gegangen.</translation>
    </message>
    <message>
        <source>It is not confirmed that the instrument has stopped: it may still be running, and high voltage may be on.</source>
        <translation>Es ist nicht bestätigt, dass das Gerät gestoppt hat: Es läuft vielleicht noch, und Hochspannung kann anliegen.</translation>
    </message>
    <message>
        <source>Cut the mains of the instrument, or switch it off, before anybody touches the appliance.</source>
        <translation>Trennen Sie das Gerät vom Netz oder schalten Sie es aus, bevor jemand den Prüfling berührt.</translation>
    </message>
    <message>
        <source>The instrument did not prepare the measurement in time.</source>
        <translation>Das Gerät hat die Messung nicht rechtzeitig vorbereitet.</translation>
    </message>
    <message>
        <source>Check how the appliance is connected, and measure again.</source>
        <translation>Prüfen Sie, wie der Prüfling angeschlossen ist, und messen Sie erneut.</translation>
    </message>
    <message>
        <source>The instrument did not start the measurement in time.</source>
        <translation>Das Gerät hat die Messung nicht rechtzeitig gestartet.</translation>
    </message>
    <message>
        <source>Check the mains supply and how the appliance is connected, and measure again.</source>
        <translation>Prüfen Sie die Netzversorgung und den Anschluss des Prüflings und messen Sie erneut.</translation>
    </message>
    <message>
        <source>The measurement ended early or without a reading, and no error was seen.</source>
        <translation>Die Messung endete vorzeitig oder ohne Messwert, ohne dass ein Fehler zu sehen war.</translation>
    </message>
    <message>
        <source>Measure again.</source>
        <translation>Messen Sie erneut.</translation>
    </message>
    <message>
        <source>The instrument gave the measurement up in the middle, for another function or for a restart.</source>
        <translation>Das Gerät hat die Messung mittendrin aufgegeben, für eine andere Funktion oder einen Neustart.</translation>
    </message>
    <message>
        <source>The instrument is busy with a function that was not started here, and does not stop it.</source>
        <translation>Das Gerät führt eine Funktion aus, die nicht hier gestartet wurde, und beendet sie nicht.</translation>
    </message>
    <message>
        <source>Switch the instrument off, and on again.</source>
        <translation>Schalten Sie das Gerät aus und wieder ein.</translation>
    </message>
    <message>
        <source>The measurement was given up, and the instrument has stopped.</source>
        <translation>Die Messung wurde aufgegeben, und das Gerät hat gestoppt.</translation>
    </message>
    <message>
        <source>The application did not say in time that it was still there, so the measurement was aborted.</source>
        <translation>Die Anwendung hat sich nicht rechtzeitig gemeldet; deshalb wurde die Messung abgebrochen.</translation>
    </message>
    <message>
        <source>It is not known whether the instrument has restarted.</source>
        <translation>Es ist nicht bekannt, ob das Gerät neu gestartet hat.</translation>
    </message>
    <message>
        <source>The instrument has not come back from its restart in time.</source>
        <translation>Das Gerät ist nach dem Neustart nicht rechtzeitig zurückgekommen.</translation>
    </message>
    <message>
        <source>Check cable and power, or switch the instrument off and on again.</source>
        <translation>Prüfen Sie Kabel und Versorgung oder schalten Sie das Gerät aus und wieder ein.</translation>
    </message>
    <message>
        <source>Check cable and power, and send the same firmware again.</source>
        <translation>Prüfen Sie Kabel und Versorgung und senden Sie dieselbe Firmware erneut.</translation>
    </message>
    <message>
        <source>Nothing was sent, and the instrument keeps its firmware.</source>
        <translation>Es wurde nichts gesendet, und das Gerät behält seine Firmware.</translation>
    </message>
    <message>
        <source>No sector was sent. The instrument may be in update mode.</source>
        <translation>Es wurde kein Sektor gesendet. Das Gerät kann im Update-Modus sein.</translation>
    </message>
    <message>
        <source>Not all of the firmware was confirmed. The instrument stays in update mode.</source>
        <translation>Nicht die ganze Firmware wurde bestätigt. Das Gerät bleibt im Update-Modus.</translation>
    </message>
    <message>
        <source>The instrument did not change to update mode in time. Nothing was sent.</source>
        <translation>Das Gerät ist nicht rechtzeitig in den Update-Modus gewechselt. Es wurde nichts gesendet.</translation>
    </message>
    <message>
        <source>All sectors and the confirmation were accepted, but the instrument stays in update mode.</source>
        <translation>Alle Sektoren und die Bestätigung wurden angenommen, aber das Gerät bleibt im Update-Modus.</translation>
    </message>
    <message>
        <source>Send the same firmware again.</source>
        <translation>Senden Sie dieselbe Firmware erneut.</translation>
    </message>
    <message>
        <source>The firmware was sent and confirmed, but the instrument has not come back in time.</source>
        <translation>Die Firmware wurde gesendet und bestätigt, aber das Gerät ist nicht rechtzeitig zurückgekommen.</translation>
    </message>
    <message>
        <source>Check cable and power. Once the link is up, its version tells what became of it.</source>
        <translation>Prüfen Sie Kabel und Versorgung. Sobald die Verbindung steht, zeigt die Version, was daraus geworden ist.</translation>
    </message>
    <message>
        <source>The link was lost before the first sector was sent.</source>
        <translation>Die Verbindung ging verloren, bevor der erste Sektor gesendet war.</translation>
    </message>
    <message>
        <source>The program vesmar-guard, which stops the instrument if this program ends in the middle of a measurement, cannot be started: %1. Nothing was sent.</source>
        <translation>Das Programm vesmar-guard, das das Gerät stoppt, wenn dieses Programm mitten in einer Messung endet, kann nicht gestartet werden: %1. Es wurde nichts gesendet.</translation>
    </message>
    <message>
        <source>Install it with the library, as libexec/vesmar/vesmar-guard.</source>
        <translation>Installieren Sie es mit der Bibliothek, als libexec/vesmar/vesmar-guard.</translation>
    </message>
    <message>
        <source>The instrument knows dates from 2001-01-01T00:00:00 to 2099-12-31T23:59:59 only.</source>
        <translation>Das Gerät kennt nur Daten von 2001-01-01T00:00:00 bis 2099-12-31T23:59:59.</translation>
    </message>
    <message>
        <source>Choose a date that exists, in these years.</source>
        <translation>Wählen Sie ein Datum, das es gibt, aus diesen Jahren.</translation>
    </message>
    <message>
        <source>These settings cannot be measured.</source>
        <translation>Mit diesen Einstellungen kann nicht gemessen werden.</translation>
    </message>
    <message>
        <source>Correct the settings.</source>
        <translation>Berichtigen Sie die Einstellungen.</translation>
    </message>
    <message>
        <source>Check that it is the right file, and complete.</source>
        <translation>Prüfen Sie, ob es die richtige Datei ist und ob sie vollständig ist.</translation>
    </message>
    <message>
        <source>The image is empty, or its size is not a multiple of 512 bytes.</source>
        <translation>Das Abbild ist leer, oder seine Größe ist kein Vielfaches von 512 Bytes.</translation>
    </message>
    <message>
        <source>The confirmation has fewer than 2 bytes.</source>
        <translation>Die Bestätigung hat weniger als 2 Bytes.</translation>
    </message>
    <message>
        <source>%1 is no serial line.</source>
        <translation>%1 ist keine serielle Leitung.</translation>
    </message>
    <message>
        <source>Let this name lead to the serial line that the instrument is wired to.</source>
        <translation>Lassen Sie diesen Namen auf die serielle Leitung zeigen, an der das Gerät hängt.</translation>
    </message>
    <message>
        <source>The serial device %1 does not exist.</source>
        <translation>Die serielle Schnittstelle %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>Check that the board&apos;s serial line has this name.</source>
        <translation>Prüfen Sie, ob die serielle Leitung der Platine so heißt.</translation>
    </message>
    <message>
        <source>No permission to open the serial device %1.</source>
        <translation>Keine Berechtigung, die serielle Schnittstelle %1 zu öffnen.</translation>
    </message>
    <message>
        <source>Join the group that owns it (usually: sudo usermod -a -G dialout &quot;$USER&quot;) and log in again.</source>
        <translation>Treten Sie der Gruppe bei, der sie gehört (meist: sudo usermod -a -G dialout &quot;$USER&quot;), und melden Sie sich neu an.</translation>
    </message>
    <message>
        <source>The serial device %1 cannot be opened: %2.</source>
        <translation>Die serielle Schnittstelle %1 kann nicht geöffnet werden: %2.</translation>
    </message>
    <message>
        <source>Check the line and its driver, and whether another program holds the device.</source>
        <translation>Prüfen Sie die Leitung, ihren Treiber und ob ein anderes Programm sie belegt.</translation>
    </message>
    <message>
        <source>The serial device %1 is held by %2.</source>
        <translation>Die serielle Schnittstelle %1 ist belegt von %2.</translation>
    </message>
    <message>
        <source>A measurement may be running. End that program, or wait until it has ended.</source>
        <translation>Vielleicht läuft eine Messung. Beenden Sie das Programm oder warten Sie, bis es fertig ist.</translation>
    </message>
    <message>
        <source>a program that cannot be seen</source>
        <translation>einem Programm, das nicht zu sehen ist</translation>
    </message>
    <message>
        <source>This application has the instrument open already.</source>
        <translation>Diese Anwendung hat das Gerät schon geöffnet.</translation>
    </message>
    <message>
        <source>Create one instrument, and use it alone.</source>
        <translation>Erzeugen Sie ein einziges Instrument und verwenden Sie nur dieses.</translation>
    </message>
    <message>
        <source>The trace file %1 cannot be written: %2.</source>
        <translation>Die Mitschrift %1 kann nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>Check its folder, its permissions and the free space.</source>
        <translation>Prüfen Sie Ordner, Rechte und freien Platz.</translation>
    </message>
    <message>
        <source>the instrument has found something wrong with itself, its supply or the connected appliance</source>
        <translation>das Gerät hat an sich selbst, seiner Versorgung oder dem Prüfling etwas bemängelt</translation>
    </message>
    <message>
        <source>Look the number up in the instrument&apos;s own manual; restart the instrument (vesmar restart) and see whether it comes back.</source>
        <translation>Schlagen Sie die Nummer im Handbuch des Geräts nach; starten Sie das Gerät neu und sehen Sie, ob sie wiederkommt.</translation>
    </message>
    <message>
        <source>Nothing is to be done.</source>
        <translation>Es ist nichts zu tun.</translation>
    </message>
    <message>
        <source>the instrument is switched off or still starting</source>
        <translation>das Gerät ist ausgeschaltet oder startet noch</translation>
    </message>
    <message>
        <source>the cable is unplugged or broken</source>
        <translation>das Kabel ist nicht gesteckt oder defekt</translation>
    </message>
    <message>
        <source>the serial device is another instrument&apos;s, or none</source>
        <translation>die serielle Schnittstelle gehört zu einem anderen Gerät oder zu keinem</translation>
    </message>
    <message>
        <source>Switch the instrument on and check its cable; the link comes back by itself. A device that was missing when the link was enabled needs a disable and an enable.</source>
        <translation>Schalten Sie das Gerät ein und prüfen Sie sein Kabel; die Verbindung kommt von selbst zurück.</translation>
    </message>
    <message>
        <source>the instrument is in a condition in which it takes no requests</source>
        <translation>das Gerät ist in einem Zustand, in dem es keine Anfragen annimmt</translation>
    </message>
    <message>
        <source>another program uses the same line</source>
        <translation>ein anderes Programm benutzt dieselbe Leitung</translation>
    </message>
    <message>
        <source>the firmware and this library do not suit each other</source>
        <translation>die Firmware und diese Bibliothek passen nicht zusammen</translation>
    </message>
    <message>
        <source>End other programs that use the line, switch the instrument off and on, and compare its version (vesmar info) with the one that this library was made for.</source>
        <translation>Beenden Sie andere Programme an der Leitung, schalten Sie das Gerät aus und ein und vergleichen Sie seine Version mit der, für die diese Bibliothek gemacht ist.</translation>
    </message>
    <message>
        <source>the cable or a plug is damaged, or runs beside a source of interference</source>
        <translation>das Kabel oder ein Stecker ist beschädigt oder liegt neben einer Störquelle</translation>
    </message>
    <message>
        <source>the instrument&apos;s line settings are not 115200 baud, 8 bits, even parity</source>
        <translation>die Leitung des Geräts ist nicht auf 115200 Baud, 8 Bit, gerade Parität eingestellt</translation>
    </message>
    <message>
        <source>Change the cable, end other programs that use the line, and switch the instrument off and on.</source>
        <translation>Tauschen Sie das Kabel, beenden Sie andere Programme an der Leitung und schalten Sie das Gerät aus und ein.</translation>
    </message>
    <message>
        <source>a request has just failed, or the instrument is restarting</source>
        <translation>eine Anfrage ist gerade gescheitert, oder das Gerät startet neu</translation>
    </message>
    <message>
        <source>Wait: within about half a minute the link is back, or one of 100 to 102 says what is wrong. A measurement that was running has to be started anew.</source>
        <translation>Warten Sie: Nach spätestens einer halben Minute ist die Verbindung zurück, oder es steht fest, was fehlt. Eine laufende Messung muss neu gestartet werden.</translation>
    </message>
    <message>
        <source>the settings do not suit the instrument or what is connected</source>
        <translation>die Einstellungen passen nicht zum Gerät oder zu dem, was angeschlossen ist</translation>
    </message>
    <message>
        <source>the instrument found a fault while it prepared, such as a missing protective conductor</source>
        <translation>das Gerät fand beim Vorbereiten einen Fehler, etwa einen fehlenden Schutzleiter</translation>
    </message>
    <message>
        <source>Check the settings and the connection of the appliance, then prepare again.</source>
        <translation>Prüfen Sie die Einstellungen und den Anschluss des Prüflings und messen Sie erneut.</translation>
    </message>
    <message>
        <source>the instrument fell back while it started, such as for a missing mains voltage</source>
        <translation>das Gerät ist beim Start zurückgefallen, etwa weil die Netzspannung fehlt</translation>
    </message>
    <message>
        <source>the instrument refused the start</source>
        <translation>das Gerät hat den Start abgelehnt</translation>
    </message>
    <message>
        <source>Check the mains supply and the connection of the appliance, then prepare and start again.</source>
        <translation>Prüfen Sie die Netzversorgung und den Anschluss des Prüflings und messen Sie erneut.</translation>
    </message>
    <message>
        <source>the measurement was ended at the instrument</source>
        <translation>die Messung wurde am Gerät beendet</translation>
    </message>
    <message>
        <source>the instrument found a fault while it measured</source>
        <translation>das Gerät fand beim Messen einen Fehler</translation>
    </message>
    <message>
        <source>Check the connection of the appliance and measure again; do not take the readings so far for a result.</source>
        <translation>Prüfen Sie den Anschluss des Prüflings und messen Sie erneut; die bisherigen Messwerte sind kein Ergebnis.</translation>
    </message>
    <message>
        <source>the instrument refused the change of mode</source>
        <translation>das Gerät hat den Wechsel des Modus abgelehnt</translation>
    </message>
    <message>
        <source>the answer was lost on the line</source>
        <translation>die Antwort ging auf der Leitung verloren</translation>
    </message>
    <message>
        <source>The firmware is unchanged. End any measurement, switch the instrument off and on, and update again.</source>
        <translation>Die Firmware ist unverändert. Beenden Sie jede Messung, schalten Sie das Gerät aus und ein und wiederholen Sie das Update.</translation>
    </message>
    <message>
        <source>the file is not a firmware image, or not a whole one: its size is no multiple of 512 bytes</source>
        <translation>die Datei ist kein oder kein ganzes Firmware-Abbild: Ihre Größe ist kein Vielfaches von 512 Bytes</translation>
    </message>
    <message>
        <source>Take the image file as it was delivered. The instrument waits in update mode: update it with the right file.</source>
        <translation>Nehmen Sie das Abbild, wie es geliefert wurde. Das Gerät wartet im Update-Modus: Wiederholen Sie das Update mit der richtigen Datei.</translation>
    </message>
    <message>
        <source>the confirmation file is not the one that belongs to the image: it is shorter than 2 bytes</source>
        <translation>die Bestätigungsdatei gehört nicht zum Abbild: Sie ist kürzer als 2 Bytes</translation>
    </message>
    <message>
        <source>Take both files as they were delivered. The instrument waits in update mode: update it with the right files.</source>
        <translation>Nehmen Sie beide Dateien, wie sie geliefert wurden. Das Gerät wartet im Update-Modus: Wiederholen Sie das Update mit den richtigen Dateien.</translation>
    </message>
    <message>
        <source>the instrument refused the update or one of its sectors</source>
        <translation>das Gerät hat das Update oder einen seiner Sektoren abgelehnt</translation>
    </message>
    <message>
        <source>a sector or its acknowledge was lost on the line</source>
        <translation>ein Sektor oder seine Quittung ging auf der Leitung verloren</translation>
    </message>
    <message>
        <source>The instrument waits in update mode and has no complete firmware: do not switch it off, check the cable, and update it again from the beginning.</source>
        <translation>Das Gerät wartet im Update-Modus und hat keine vollständige Firmware: Nicht ausschalten, Kabel prüfen und das Update von vorn beginnen.</translation>
    </message>
    <message>
        <source>the confirmation file belongs to another image</source>
        <translation>die Bestätigungsdatei gehört zu einem anderen Abbild</translation>
    </message>
    <message>
        <source>the image arrived damaged</source>
        <translation>das Abbild kam beschädigt an</translation>
    </message>
    <message>
        <source>The instrument waits in update mode: update it again with the image and the confirmation that belong together.</source>
        <translation>Das Gerät wartet im Update-Modus: Wiederholen Sie das Update mit Abbild und Bestätigung, die zusammengehören.</translation>
    </message>
    <message>
        <source>somebody has changed the function at the instrument while the test was prepared</source>
        <translation>jemand hat am Gerät die Funktion geändert, während die Prüfung vorbereitet wurde</translation>
    </message>
    <message>
        <source>Leave the instrument alone during the test and prepare it again.</source>
        <translation>Lassen Sie das Gerät während der Prüfung in Ruhe und prüfen Sie erneut.</translation>
    </message>
    <message>
        <source>the start test has not been passed: no mains voltage, or L and N swapped</source>
        <translation>der Starttest wurde nicht bestanden: keine Netzspannung, oder L und N vertauscht</translation>
    </message>
    <message>
        <source>the instrument did not answer in time</source>
        <translation>das Gerät hat nicht rechtzeitig geantwortet</translation>
    </message>
    <message>
        <source>Check the mains supply and the start test that the instrument shows, then start the test again.</source>
        <translation>Prüfen Sie die Netzversorgung und den Starttest, den das Gerät zeigt, und prüfen Sie erneut.</translation>
    </message>
    <message>
        <source>the instrument took too long to prepare</source>
        <translation>das Gerät hat zu lange vorbereitet</translation>
    </message>
    <message>
        <source>Check the connection of the RCD and start the test again.</source>
        <translation>Prüfen Sie den Anschluss des FI-Schutzschalters und prüfen Sie erneut.</translation>
    </message>
    <message>
        <source>the RCD is not connected, is switched off or is of another kind</source>
        <translation>der FI-Schutzschalter ist nicht angeschlossen, ausgeschaltet oder von anderer Art</translation>
    </message>
    <message>
        <source>the instrument did not answer the check</source>
        <translation>das Gerät hat auf die Kontrolle nicht geantwortet</translation>
    </message>
    <message>
        <source>Check that the RCD is connected and switched on, and start the test again.</source>
        <translation>Prüfen Sie, ob der FI-Schutzschalter angeschlossen und eingeschaltet ist, und prüfen Sie erneut.</translation>
    </message>
    <message>
        <source>the RCD is not connected, is switched off or does not suit the settings</source>
        <translation>der FI-Schutzschalter ist nicht angeschlossen, ausgeschaltet oder passt nicht zu den Einstellungen</translation>
    </message>
    <message>
        <source>the mains voltage at the RCD is not what the test needs</source>
        <translation>die Netzspannung am FI-Schutzschalter ist nicht so, wie die Prüfung sie braucht</translation>
    </message>
    <message>
        <source>Check the connection of the RCD and the settings (current, type, phase); look the check code up in the instrument&apos;s own manual, then start the test again.</source>
        <translation>Prüfen Sie den Anschluss des FI-Schutzschalters und die Einstellungen (Strom, Typ, Phase); schlagen Sie die Nummer im Handbuch des Geräts nach und prüfen Sie erneut.</translation>
    </message>
    <message>
        <source>L and N are swapped, or the mains voltage is out of the range of the IEC test</source>
        <translation>L und N sind vertauscht, oder die Netzspannung liegt außerhalb des Bereichs der IEC-Prüfung</translation>
    </message>
    <message>
        <source>Turn the mains plug or set the swap of L and N, and check the mains voltage; the test goes on by itself once it suits, or abort it.</source>
        <translation>Drehen Sie den Netzstecker oder tauschen Sie L und N und prüfen Sie die Netzspannung; passt sie, geht die Prüfung von selbst weiter.</translation>
    </message>
    <message>
        <source>the instrument reports its error 0</source>
        <translation>das Gerät meldet seinen Fehler 0</translation>
    </message>
    <message>
        <source>a Ub/Re test was started and the instrument stayed silent</source>
        <translation>eine Ub/Re-Prüfung wurde gestartet, und das Gerät blieb stumm</translation>
    </message>
    <message>
        <source>Check the connection of the RCD and start the test again; if it stays so, restart the instrument.</source>
        <translation>Prüfen Sie den Anschluss des FI-Schutzschalters und prüfen Sie erneut; bleibt es so, starten Sie das Gerät neu.</translation>
    </message>
    <message>
        <source>the test was aborted</source>
        <translation>die Prüfung wurde abgebrochen</translation>
    </message>
    <message>
        <source>the instrument ended the test by itself</source>
        <translation>das Gerät hat die Prüfung von selbst beendet</translation>
    </message>
    <message>
        <source>the instrument reports its error 1</source>
        <translation>das Gerät meldet seinen Fehler 1</translation>
    </message>
    <message>
        <source>If nobody aborted the test, check the connection of the RCD and start it again.</source>
        <translation>Wenn niemand die Prüfung abgebrochen hat: Prüfen Sie den Anschluss des FI-Schutzschalters und prüfen Sie erneut.</translation>
    </message>
    <message>
        <source>the instrument has found something wrong with the RCD, the mains or itself</source>
        <translation>das Gerät hat am FI-Schutzschalter, am Netz oder an sich selbst etwas bemängelt</translation>
    </message>
    <message>
        <source>Look the number, less 520, up in the instrument&apos;s own manual, and start the test again.</source>
        <translation>Schlagen Sie die Nummer, vermindert um 520, im Handbuch des Geräts nach und prüfen Sie erneut.</translation>
    </message>
    <message>
        <source>the instrument reports its error 5; an IEC test that runs begins anew by itself</source>
        <translation>das Gerät meldet seinen Fehler 5; eine laufende IEC-Prüfung beginnt von selbst neu</translation>
    </message>
    <message>
        <source>Let an IEC test go on; otherwise look error 5 up in the instrument&apos;s own manual, and start the test again.</source>
        <translation>Lassen Sie eine IEC-Prüfung weiterlaufen; sonst schlagen Sie Fehler 5 im Handbuch des Geräts nach und prüfen Sie erneut.</translation>
    </message>
    <message>
        <source>no error</source>
        <translation>kein Fehler</translation>
    </message>
    <message>
        <source>the link is lost: the instrument does not answer</source>
        <translation>die Verbindung ist verloren: Das Gerät antwortet nicht</translation>
    </message>
    <message>
        <source>the link is lost: the instrument keeps refusing requests</source>
        <translation>die Verbindung ist verloren: Das Gerät lehnt Anfragen ab</translation>
    </message>
    <message>
        <source>the link is lost: answers keep arriving damaged</source>
        <translation>die Verbindung ist verloren: Antworten kommen beschädigt an</translation>
    </message>
    <message>
        <source>the link is being re-established</source>
        <translation>die Verbindung wird wiederhergestellt</translation>
    </message>
    <message>
        <source>the instrument could not prepare the measurement</source>
        <translation>das Gerät konnte die Messung nicht vorbereiten</translation>
    </message>
    <message>
        <source>the instrument could not start the measurement</source>
        <translation>das Gerät konnte die Messung nicht starten</translation>
    </message>
    <message>
        <source>the measurement ended without a result</source>
        <translation>die Messung endete ohne Ergebnis</translation>
    </message>
    <message>
        <source>the instrument could not be switched to update mode</source>
        <translation>das Gerät konnte nicht in den Update-Modus wechseln</translation>
    </message>
    <message>
        <source>the firmware image cannot be used</source>
        <translation>das Firmware-Abbild ist nicht brauchbar</translation>
    </message>
    <message>
        <source>the firmware&apos;s confirmation data is too short</source>
        <translation>die Bestätigung der Firmware ist zu kurz</translation>
    </message>
    <message>
        <source>the instrument refused the update, or a part of the image was not transferred</source>
        <translation>das Gerät hat das Update abgelehnt, oder ein Teil des Abbilds wurde nicht übertragen</translation>
    </message>
    <message>
        <source>the instrument refused the closing confirmation of the update</source>
        <translation>das Gerät hat die abschließende Bestätigung des Updates abgelehnt</translation>
    </message>
    <message>
        <source>the instrument reports a function other than the RCD test</source>
        <translation>das Gerät meldet eine andere Funktion als die FI-Prüfung</translation>
    </message>
    <message>
        <source>the RCD test stayed idle for too long</source>
        <translation>die FI-Prüfung blieb zu lange untätig</translation>
    </message>
    <message>
        <source>the RCD test stayed prepared for too long</source>
        <translation>die FI-Prüfung blieb zu lange vorbereitet</translation>
    </message>
    <message>
        <source>the check of the RCD failed</source>
        <translation>die Kontrolle des FI-Schutzschalters ist gescheitert</translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 2</source>
        <translation>die Kontrolle des FI-Schutzschalters ist mit Code 2 des Geräts gescheitert</translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 3</source>
        <translation>die Kontrolle des FI-Schutzschalters ist mit Code 3 des Geräts gescheitert</translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 4</source>
        <translation>die Kontrolle des FI-Schutzschalters ist mit Code 4 des Geräts gescheitert</translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 7</source>
        <translation>die Kontrolle des FI-Schutzschalters ist mit Code 7 des Geräts gescheitert</translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 8</source>
        <translation>die Kontrolle des FI-Schutzschalters ist mit Code 8 des Geräts gescheitert</translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 9</source>
        <translation>die Kontrolle des FI-Schutzschalters ist mit Code 9 des Geräts gescheitert</translation>
    </message>
    <message>
        <source>the mains voltage does not suit the IEC RCD test</source>
        <translation>die Netzspannung passt nicht zur IEC-FI-Prüfung</translation>
    </message>
    <message>
        <source>the RCD test stayed silent, or the instrument reports its error 0 in it</source>
        <translation>die FI-Prüfung blieb stumm, oder das Gerät meldet darin seinen Fehler 0</translation>
    </message>
    <message>
        <source>the RCD test ended without a result, or the instrument reports its error 1 in it</source>
        <translation>die FI-Prüfung endete ohne Ergebnis, oder das Gerät meldet darin seinen Fehler 1</translation>
    </message>
    <message>
        <source>the instrument reports its error %1</source>
        <translation>das Gerät meldet seinen Fehler %1</translation>
    </message>
    <message>
        <source>the instrument reports its error %1 in an RCD test</source>
        <translation>das Gerät meldet in einer FI-Prüfung seinen Fehler %1</translation>
    </message>
    <message>
        <source>unknown error</source>
        <translation>unbekannter Fehler</translation>
    </message>
    <message>
        <source>resistance</source>
        <translation>Widerstand</translation>
    </message>
    <message>
        <source>voltage</source>
        <translation>Spannung</translation>
    </message>
    <message>
        <source>current</source>
        <translation>Strom</translation>
    </message>
    <message>
        <source>energy</source>
        <translation>Energie</translation>
    </message>
    <message>
        <source>power</source>
        <translation>Leistung</translation>
    </message>
    <message>
        <source>power factor</source>
        <translation>Leistungsfaktor</translation>
    </message>
    <message>
        <source>apparent power</source>
        <translation>Scheinleistung</translation>
    </message>
    <message>
        <source>maximum voltage</source>
        <translation>Höchstspannung</translation>
    </message>
    <message>
        <source>ULN</source>
        <translation>ULN</translation>
    </message>
    <message>
        <source>primary voltage</source>
        <translation>Primärspannung</translation>
    </message>
    <message>
        <source>PWM</source>
        <translation>PWM</translation>
    </message>
    <message>
        <source>ISUB voltage</source>
        <translation>ISUB-Spannung</translation>
    </message>
    <message>
        <source>ISUB current</source>
        <translation>ISUB-Strom</translation>
    </message>
    <message>
        <source>result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>delay</source>
        <translation>Verzögerung</translation>
    </message>
    <message>
        <source>UNPE</source>
        <translation>UNPE</translation>
    </message>
    <message>
        <source>frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Ia</source>
        <translation>Ia</translation>
    </message>
    <message>
        <source>Ta</source>
        <translation>Ta</translation>
    </message>
    <message>
        <source>For ia-ta-1 and ia-ta-2: the Re that ub-re has given, in the instrument&apos;s own unit</source>
        <translation>Für Ia/Ta: das Re, das Ub/Re ergeben hat, in der Einheit des Geräts</translation>
    </message>
    <message>
        <source>%1 (process %2)</source>
        <translation>%1 (Prozess %2)</translation>
    </message>
    <message>
        <source>%1 more</source>
        <translation>%1 weiteren</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>%1, or &quot;%2&quot;</source>
        <translation>%1 oder „%2“</translation>
    </message>
</context>
</TS>
