<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Cli::Text</name>
    <message>
        <source>no character device</source>
        <translation>kein zeichenorientiertes Gerät</translation>
    </message>
    <message>
        <source>a character device that cannot be opened: %1</source>
        <translation>ein zeichenorientiertes Gerät, das sich nicht öffnen lässt: %1</translation>
    </message>
    <message>
        <source>a terminal</source>
        <translation>ein Terminal</translation>
    </message>
    <message>
        <source>a character device, but no terminal</source>
        <translation>ein zeichenorientiertes Gerät, aber kein Terminal</translation>
    </message>
    <message>
        <source>read and write</source>
        <translation>lesen und schreiben</translation>
    </message>
    <message>
        <source>write</source>
        <translation>schreiben</translation>
    </message>
    <message>
        <source>read</source>
        <translation>lesen</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>may read and write</source>
        <translation>darf lesen und schreiben</translation>
    </message>
    <message>
        <source>may neither read nor write</source>
        <translation>darf weder lesen noch schreiben</translation>
    </message>
    <message>
        <source>may only read</source>
        <translation>darf nur lesen</translation>
    </message>
    <message>
        <source>may only write</source>
        <translation>darf nur schreiben</translation>
    </message>
    <message>
        <source>below %1 ms</source>
        <translation>unter %1 ms</translation>
    </message>
    <message>
        <source>later</source>
        <translation>später</translation>
    </message>
    <message>
        <source>%1 is a link to %2</source>
        <translation>%1 ist ein Verweis auf %2</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>%1 leads to %2</source>
        <translation>%1 führt zu %2</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>Rechte</translation>
    </message>
    <message>
        <source>owner %1: %2; group %3: %4; others: %5</source>
        <translation>Eigentümer %1: %2; Gruppe %3: %4; andere: %5</translation>
    </message>
    <message>
        <source>This user</source>
        <translation>Dieser Nutzer</translation>
    </message>
    <message>
        <source>Held by</source>
        <translation>Belegt von</translation>
    </message>
    <message>
        <source>nobody else</source>
        <translation>niemand anderem</translation>
    </message>
    <message>
        <source>nobody else that can be seen; programs of other users show to root only</source>
        <translation>niemand anderem, der zu sehen ist; Programme anderer Nutzer sieht nur root</translation>
    </message>
    <message>
        <source>Answers</source>
        <translation>Antworten</translation>
    </message>
    <message>
        <source>of %1 requests %2 proper, %3 refused, %4 damaged, %5 silent</source>
        <translation>von %1 Anfragen %2 richtig, %3 abgelehnt, %4 beschädigt, %5 ohne Antwort</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Leitung</translation>
    </message>
    <message>
        <source>broken: %1</source>
        <translation>gestört: %1</translation>
    </message>
    <message>
        <source>Answer times</source>
        <translation>Antwortzeiten</translation>
    </message>
    <message>
        <source>fastest %1, median %2, slowest %3</source>
        <translation>schnellste %1, mittlere %2, langsamste %3</translation>
    </message>
    <message>
        <source>Too late</source>
        <translation>Zu spät</translation>
    </message>
    <message>
        <source>%1 later than %2 ms; a lost link does not return with them</source>
        <translation>%1 später als %2 ms; damit kommt eine verlorene Verbindung nicht zurück</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Modus</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>Function state</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Start test</source>
        <translation>Starttest</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>The serial device %1 is a link to %2, which does not exist. Plug the adapter in, or let the link lead to the line that there is.</source>
        <translation>Die serielle Schnittstelle %1 ist ein Verweis auf %2, das es nicht gibt. Stecken Sie den Adapter ein, oder lassen Sie den Verweis zur vorhandenen Leitung führen.</translation>
    </message>
    <message>
        <source>%1 is no serial line: it is %2. Let this name lead to the serial line that the instrument is wired to.</source>
        <translation>%1 ist keine serielle Leitung, sondern %2. Lassen Sie diesen Namen zu der seriellen Leitung führen, an der das Gerät angeschlossen ist.</translation>
    </message>
    <message>
        <source>Let the administrator give the device a group that may read and write it, and join that.</source>
        <translation>Lassen Sie den Verwalter der Schnittstelle eine Gruppe geben, die lesen und schreiben darf, und treten Sie ihr bei.</translation>
    </message>
    <message>
        <source>Join the group %1 (sudo usermod -a -G %1 &quot;$USER&quot;) and log in again.</source>
        <translation>Treten Sie der Gruppe %1 bei (sudo usermod -a -G %1 &quot;$USER&quot;) und melden Sie sich neu an.</translation>
    </message>
    <message>
        <source>No permission to read and write the serial device %1. %2</source>
        <translation>Keine Berechtigung, die serielle Schnittstelle %1 zu lesen und zu schreiben. %2</translation>
    </message>
    <message>
        <source>The serial device %1 is held by %2, so nothing was sent: a measurement may be running. End that program, and run vesmar doctor again.</source>
        <translation>Die serielle Schnittstelle %1 ist von %2 belegt, daher wurde nichts gesendet: Vielleicht läuft eine Messung. Beenden Sie dieses Programm und rufen Sie vesmar doctor erneut auf.</translation>
    </message>
    <message>
        <source>The line broke while the instrument was asked: %1. Check the adapter and its plug, and run vesmar doctor again.</source>
        <translation>Die Leitung fiel aus, während das Gerät gefragt wurde: %1. Prüfen Sie den Adapter und seinen Stecker und rufen Sie vesmar doctor erneut auf.</translation>
    </message>
    <message>
        <source>The link is too slow: %1 of %2 answers came later than %3 ms, and a lost link would not come back with those. Check whether the adapter or another load of this computer delays them, and switch the instrument off and on again.</source>
        <translation>Die Verbindung ist zu langsam: %1 von %2 Antworten kamen später als %3 ms, und damit käme eine verlorene Verbindung nicht zurück. Prüfen Sie, ob der Adapter oder eine andere Last dieses Rechners sie verzögert, und schalten Sie das Gerät aus und wieder ein.</translation>
    </message>
    <message>
        <source>The link is sound, but the instrument is in the mode %1, in which it does not measure. Run vesmar restart.</source>
        <translation>Die Verbindung ist in Ordnung, aber das Gerät ist im Modus %1, in dem es nicht misst. Rufen Sie vesmar restart auf.</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>Run vesmar stop, or switch the instrument off.</source>
        <translation>Rufen Sie vesmar stop auf, oder schalten Sie das Gerät aus.</translation>
    </message>
    <message>
        <source>The link is sound, but the instrument reports %1. %2</source>
        <translation>Die Verbindung ist in Ordnung, aber das Gerät meldet %1. %2</translation>
    </message>
    <message>
        <source>no terminal</source>
        <translation>kein Terminal</translation>
    </message>
    <message>
        <source>The link is sound, and the instrument is in its normal mode and reports no error. There is nothing to be done.</source>
        <translation>Die Verbindung ist in Ordnung, und das Gerät ist in seinem normalen Modus und meldet keinen Fehler. Es ist nichts zu tun.</translation>
    </message>
    <message>
        <source>cannot write the output: %1</source>
        <translation>Die Ausgabe kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>Waiting for the instrument to answer, %1 s at the most. Ctrl-C ends it.</source>
        <translation>Warte auf die Antwort des Geräts, höchstens %1 s. Strg-C beendet es.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date and time from 2001-01-01T00:00:00 to 2099-12-31T23:59:59, nor now</source>
        <translation>„%1“ ist weder ein Zeitpunkt von 2001-01-01T00:00:00 bis 2099-12-31T23:59:59 noch „now“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date from 2001-01-01 to 2099-12-31</source>
        <translation>„%1“ ist kein Datum von 2001-01-01 bis 2099-12-31</translation>
    </message>
    <message>
        <source>The serial device %1 does not exist. Check that the board&apos;s serial line has this name, or try it without an instrument: vesmar-simulator run -- vesmar info</source>
        <translation>Die serielle Schnittstelle %1 gibt es nicht. Prüfen Sie, ob die serielle Leitung des Rechners diesen Namen hat, oder versuchen Sie es ohne Gerät: vesmar-simulator run -- vesmar info</translation>
    </message>
    <message>
        <source>The instrument refuses every request. Switch it off and on again, and check that it is of the right kind.</source>
        <translation>Das Gerät lehnt jede Anfrage ab. Schalten Sie es aus und wieder ein, und prüfen Sie, ob es die richtige Art von Gerät ist.</translation>
    </message>
    <message>
        <source>The instrument&apos;s answers arrive damaged. Check the cable and its shield, and that no other program uses the line.</source>
        <translation>Die Antworten des Geräts kommen beschädigt an. Prüfen Sie das Kabel und seinen Schirm, und dass kein anderes Programm die Leitung benutzt.</translation>
    </message>
    <message>
        <source>The instrument answers, but does not leave its mode %1. Switch it off and on again.</source>
        <translation>Das Gerät antwortet, verlässt aber seinen Modus %1 nicht. Schalten Sie es aus und wieder ein.</translation>
    </message>
    <message>
        <source>The instrument answered, but fell silent. Check cable and power, and start again.</source>
        <translation>Das Gerät hat geantwortet, ist aber verstummt. Prüfen Sie Kabel und Versorgung und beginnen Sie von vorn.</translation>
    </message>
    <message>
        <source>The instrument answers, but its clocks could not be read within %1. Check the cable, and give it more time with --timeout.</source>
        <translation>Das Gerät antwortet, aber seine Uhren ließen sich nicht innerhalb von %1 lesen. Prüfen Sie das Kabel, und geben Sie ihm mit --timeout mehr Zeit.</translation>
    </message>
    <message>
        <source>The instrument gave no proper answer within %1: it refuses, answers damaged or falls silent. Check cable and power; --timeout 30 finds out which.</source>
        <translation>Das Gerät hat innerhalb von %1 nicht richtig geantwortet: Es lehnt ab, antwortet beschädigt oder verstummt. Prüfen Sie Kabel und Versorgung; --timeout 30 findet heraus, was davon.</translation>
    </message>
    <message>
        <source>The instrument did not answer within %1. Check that it is switched on and the cable is plugged in, or try it without an instrument: vesmar-simulator run -- vesmar info</source>
        <translation>Das Gerät hat innerhalb von %1 nicht geantwortet. Prüfen Sie, ob es eingeschaltet und das Kabel gesteckt ist, oder versuchen Sie es ohne Gerät: vesmar-simulator run -- vesmar info</translation>
    </message>
    <message>
        <source>The instrument is in update mode (%1) and waits for firmware; run vesmar update IMAGE --confirmation FILE.</source>
        <translation>Das Gerät ist im Update-Modus (%1) und wartet auf Firmware; rufen Sie vesmar update ABBILD --confirmation DATEI auf.</translation>
    </message>
    <message>
        <source>The link to it was lost; check cable and power, and try again.</source>
        <translation>Die Verbindung zum Gerät ging verloren; prüfen Sie Kabel und Versorgung und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>%1 is active at the instrument, %2, and no program attends it: a dangerous voltage may be present. Keep away from the appliance.</source>
        <translation>%1 ist am Gerät aktiv, %2, und kein Programm beaufsichtigt es: Eine gefährliche Spannung kann anliegen. Halten Sie sich vom Prüfling fern.</translation>
    </message>
    <message>
        <source>%1 is active at the instrument, %2, and no program attends it.</source>
        <translation>%1 ist am Gerät aktiv, %2, und kein Programm beaufsichtigt es.</translation>
    </message>
    <message>
        <source>It is told to stop; vesmar stop proves that it has.</source>
        <translation>Es wird gestoppt; vesmar stop weist nach, dass es gestoppt hat.</translation>
    </message>
    <message>
        <source>%1 is not active any more.</source>
        <translation>%1 ist nicht mehr aktiv.</translation>
    </message>
    <message>
        <source>%1; a dangerous voltage is present while it runs</source>
        <translation>%1; währenddessen liegt eine gefährliche Spannung an</translation>
    </message>
    <message>
        <source>%1, a single measurement</source>
        <translation>%1, eine einzelne Messung</translation>
    </message>
    <message>
        <source>%1 gives a single result; only continuous functions have readings to write to a file</source>
        <translation>%1 liefert ein einzelnes Ergebnis; nur fortlaufende Funktionen haben Messwerte, die in eine Datei geschrieben werden können</translation>
    </message>
    <message>
        <source>Link lost, the state of the instrument is unknown: it may still be running, and high voltage may be on. Switch it off at the instrument.</source>
        <translation>Verbindung verloren, der Zustand des Geräts ist unbekannt: Es läuft vielleicht noch, und Hochspannung kann anliegen. Schalten Sie es am Gerät aus.</translation>
    </message>
    <message>
        <source>Link lost, or the measurement refused by the instrument, while preparing.</source>
        <translation>Beim Vorbereiten ging die Verbindung verloren, oder das Gerät hat die Messung abgelehnt.</translation>
    </message>
    <message>
        <source>Link lost in the middle of the measurement.</source>
        <translation>Mitten in der Messung ging die Verbindung verloren.</translation>
    </message>
    <message>
        <source>It is back, and the instrument is confirmed to have stopped.</source>
        <translation>Sie ist zurück, und es ist bestätigt, dass das Gerät gestoppt hat.</translation>
    </message>
    <message>
        <source>Measurement %1 failed: %2</source>
        <translation>Messung %1 gescheitert: %2</translation>
    </message>
    <message>
        <source>Measurement %1 failed.</source>
        <translation>Messung %1 gescheitert.</translation>
    </message>
    <message>
        <source>Measurement %1 done, but for %2 s there was no reading.</source>
        <translation>Messung %1 abgeschlossen, aber %2 s lang gab es keinen Messwert.</translation>
    </message>
    <message>
        <source>Measurement %1 done.</source>
        <translation>Messung %1 abgeschlossen.</translation>
    </message>
    <message>
        <source>Measurement %1 aborted.</source>
        <translation>Messung %1 abgebrochen.</translation>
    </message>
    <message>
        <source>The instrument is confirmed to have stopped.</source>
        <translation>Es ist bestätigt, dass das Gerät gestoppt hat.</translation>
    </message>
    <message>
        <source>STOP NOT CONFIRMED: the instrument may still be running, and high voltage may be on. Switch it off at the instrument.</source>
        <translation>STOPP NICHT BESTÄTIGT: Das Gerät läuft vielleicht noch, und Hochspannung kann anliegen. Schalten Sie es am Gerät aus.</translation>
    </message>
    <message>
        <source>DANGEROUS VOLTAGE</source>
        <translation>GEFÄHRLICHE SPANNUNG</translation>
    </message>
    <message>
        <source>no reading for %1 s</source>
        <translation>seit %1 s kein Messwert</translation>
    </message>
    <message>
        <source>waiting until another function has stopped</source>
        <translation>wartet, bis eine andere Funktion gestoppt hat</translation>
    </message>
    <message>
        <source>preparing</source>
        <translation>bereitet vor</translation>
    </message>
    <message>
        <source>checking the object under test</source>
        <translation>kontrolliert den Prüfling</translation>
    </message>
    <message>
        <source>waiting for a suitable mains voltage</source>
        <translation>wartet auf eine passende Netzspannung</translation>
    </message>
    <message>
        <source>starting</source>
        <translation>startet</translation>
    </message>
    <message>
        <source>running</source>
        <translation>misst</translation>
    </message>
    <message>
        <source>stopping</source>
        <translation>stoppt</translation>
    </message>
    <message>
        <source>cleaning up</source>
        <translation>räumt auf</translation>
    </message>
    <message>
        <source>waiting until the instrument has stopped</source>
        <translation>wartet, bis das Gerät gestoppt hat</translation>
    </message>
    <message>
        <source>no reading</source>
        <translation>kein Messwert</translation>
    </message>
    <message>
        <source>for %1 s, after %2 s</source>
        <translation>%1 s lang, nach %2 s</translation>
    </message>
    <message>
        <source>%1; waiting until it does. Ctrl-C aborts the measurement.</source>
        <translation>%1; es wird so lange gewartet. Strg-C bricht die Messung ab.</translation>
    </message>
    <message>
        <source>Link lost, the state of the instrument is unknown; trying to get it back and to stop the measurement.</source>
        <translation>Verbindung verloren, der Zustand des Geräts ist unbekannt; es wird versucht, sie wiederherzustellen und die Messung zu stoppen.</translation>
    </message>
    <message>
        <source>signal %1</source>
        <translation>Signal %1</translation>
    </message>
    <message>
        <source>nobody reads the output</source>
        <translation>niemand liest die Ausgabe</translation>
    </message>
    <message>
        <source>The measurement is being ended already (%1); waiting until the instrument is confirmed to have stopped.</source>
        <translation>Die Messung wird schon beendet (%1); es wird gewartet, bis bestätigt ist, dass das Gerät gestoppt hat.</translation>
    </message>
    <message>
        <source>Aborting the measurement (%1); waiting until the instrument is confirmed to have stopped.</source>
        <translation>Die Messung wird abgebrochen (%1); es wird gewartet, bis bestätigt ist, dass das Gerät gestoppt hat.</translation>
    </message>
    <message>
        <source>Aborted before the measurement began.</source>
        <translation>Abgebrochen, bevor die Messung begann.</translation>
    </message>
    <message>
        <source>Nothing was measured.</source>
        <translation>Es wurde nichts gemessen.</translation>
    </message>
    <message>
        <source>A DANGEROUS VOLTAGE is present from the start of the measurement until the instrument is confirmed to have stopped. Touch neither the appliance nor the probes.</source>
        <translation>Eine GEFÄHRLICHE SPANNUNG liegt an, vom Start der Messung bis bestätigt ist, dass das Gerät gestoppt hat. Berühren Sie weder den Prüfling noch die Prüfspitzen.</translation>
    </message>
    <message>
        <source>Not every reading was kept: %1.</source>
        <translation>Nicht jeder Messwert ist gespeichert: %1.</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>cannot write the file %1: %2</source>
        <translation>Die Datei %1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>Ended by signal %1.</source>
        <translation>Durch Signal %1 beendet.</translation>
    </message>
    <message>
        <source>%1 is not a regular file</source>
        <translation>%1 ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>cannot read %1: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>%1 has %2 bytes, which is too much; check that it is the right file</source>
        <translation>%1 hat %2 Bytes, das ist zu viel; prüfen Sie, ob es die richtige Datei ist</translation>
    </message>
    <message>
        <source>the image %1 is empty; check that it is the right file</source>
        <translation>das Abbild %1 ist leer; prüfen Sie, ob es die richtige Datei ist</translation>
    </message>
    <message>
        <source>the image %1 has %2 bytes, which is not a multiple of %3; check that it is the right file and complete</source>
        <translation>das Abbild %1 hat %2 Bytes, das ist kein Vielfaches von %3; prüfen Sie, ob es die richtige Datei und vollständig ist</translation>
    </message>
    <message>
        <source>the confirmation %1 has fewer than %2 bytes; check that it is the right file</source>
        <translation>die Bestätigung %1 hat weniger als %2 Bytes; prüfen Sie, ob es die richtige Datei ist</translation>
    </message>
    <message>
        <source>the image %1</source>
        <translation>das Abbild %1</translation>
    </message>
    <message>
        <source>the confirmation %1</source>
        <translation>die Bestätigung %1</translation>
    </message>
    <message>
        <source>%1 of %2 sectors</source>
        <translation>%1 von %2 Sektoren</translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation>noch %1 s</translation>
    </message>
    <message>
        <source>Firmware update done. The instrument is back in its normal mode.</source>
        <translation>Firmware-Update abgeschlossen. Das Gerät ist wieder in seinem normalen Modus.</translation>
    </message>
    <message>
        <source>Firmware update failed: the instrument did not change to update mode in time. Nothing was sent; run the same command again.</source>
        <translation>Firmware-Update gescheitert: Das Gerät hat nicht rechtzeitig in den Update-Modus gewechselt. Es wurde nichts gesendet; rufen Sie denselben Befehl erneut auf.</translation>
    </message>
    <message>
        <source>Firmware update failed: all sectors and the confirmation were accepted, but the instrument stays in update mode; run the same command again.</source>
        <translation>Firmware-Update gescheitert: Alle Sektoren und die Bestätigung wurden angenommen, aber das Gerät bleibt im Update-Modus; rufen Sie denselben Befehl erneut auf.</translation>
    </message>
    <message>
        <source>The firmware was sent and confirmed, but the instrument has not come back in time. Check cable and power; vesmar info tells what became of it.</source>
        <translation>Die Firmware wurde gesendet und bestätigt, aber das Gerät ist nicht rechtzeitig zurückgekommen. Prüfen Sie Kabel und Versorgung; vesmar info sagt, was aus ihm geworden ist.</translation>
    </message>
    <message>
        <source>Firmware update failed: the link was lost before the first sector was sent. Check cable and power, and run the same command again.</source>
        <translation>Firmware-Update gescheitert: Die Verbindung ging verloren, bevor der erste Sektor gesendet war. Prüfen Sie Kabel und Versorgung und rufen Sie denselben Befehl erneut auf.</translation>
    </message>
    <message>
        <source>At least %1 of %2 sectors were confirmed.</source>
        <translation>Mindestens %1 von %2 Sektoren wurden bestätigt.</translation>
    </message>
    <message>
        <source>%1 of %2 sectors was confirmed.</source>
        <translation>%1 von %2 Sektoren wurde bestätigt.</translation>
    </message>
    <message>
        <source>%1 of %2 sectors were confirmed.</source>
        <translation>%1 von %2 Sektoren wurden bestätigt.</translation>
    </message>
    <message>
        <source>Firmware update failed: %1.</source>
        <translation>Firmware-Update gescheitert: %1.</translation>
    </message>
    <message>
        <source>Nothing was sent, and the instrument keeps its firmware; run the same command again.</source>
        <translation>Es wurde nichts gesendet, und das Gerät behält seine Firmware; rufen Sie denselben Befehl erneut auf.</translation>
    </message>
    <message>
        <source>No sector was sent. The instrument may be in update mode; check cable and power, and run the same command again.</source>
        <translation>Kein Sektor wurde gesendet. Das Gerät ist vielleicht im Update-Modus; prüfen Sie Kabel und Versorgung und rufen Sie denselben Befehl erneut auf.</translation>
    </message>
    <message>
        <source>The instrument stays in update mode; run the same command again.</source>
        <translation>Das Gerät bleibt im Update-Modus; rufen Sie denselben Befehl erneut auf.</translation>
    </message>
    <message>
        <source>Ended by signal %1 after the firmware was sent and confirmed. Whether the instrument came back with it was not waited for; vesmar info tells.</source>
        <translation>Durch Signal %1 beendet, nachdem die Firmware gesendet und bestätigt war. Ob das Gerät mit ihr zurückkam, wurde nicht abgewartet; vesmar info sagt es.</translation>
    </message>
    <message>
        <source>Ended by signal %1 before the first sector was sent: the instrument keeps its firmware. It may be in update mode; vesmar restart brings it back.</source>
        <translation>Durch Signal %1 beendet, bevor der erste Sektor gesendet war: Das Gerät behält seine Firmware. Es ist vielleicht im Update-Modus; vesmar restart holt es zurück.</translation>
    </message>
    <message>
        <source>Signal %1 does not end this: an image that is cut short leaves the instrument without firmware. Sending it goes on.</source>
        <translation>Signal %1 beendet dies nicht: Ein abgeschnittenes Abbild lässt das Gerät ohne Firmware zurück. Das Senden geht weiter.</translation>
    </message>
    <message>
        <source>Version before</source>
        <translation>Version vorher</translation>
    </message>
    <message>
        <source>Changing the instrument to update mode.</source>
        <translation>Das Gerät wechselt in den Update-Modus.</translation>
    </message>
    <message>
        <source>Sending the firmware. Do not switch the instrument off.</source>
        <translation>Die Firmware wird gesendet. Schalten Sie das Gerät nicht aus.</translation>
    </message>
    <message>
        <source>The firmware is confirmed. Waiting for the instrument to come back.</source>
        <translation>Die Firmware ist bestätigt. Warte, bis das Gerät zurückkommt.</translation>
    </message>
    <message>
        <source>Version after</source>
        <translation>Version nachher</translation>
    </message>
    <message>
        <source>The instrument did not take the date %1: it was last calibrated at %2.</source>
        <translation>Das Gerät hat das Datum %1 nicht übernommen: Zuletzt kalibriert wurde es am %2.</translation>
    </message>
    <message>
        <source>Last calibrated</source>
        <translation>Kalibriert</translation>
    </message>
    <message>
        <source>The date of the last calibration is set.</source>
        <translation>Das Datum der letzten Kalibrierung ist gestellt.</translation>
    </message>
    <message>
        <source>The date of the last calibration was read.</source>
        <translation>Das Datum der letzten Kalibrierung wurde gelesen.</translation>
    </message>
    <message>
        <source>The instrument is in calibration mode; waiting until it has left it (signal %1).</source>
        <translation>Das Gerät ist im Kalibriermodus; es wird gewartet, bis es ihn verlassen hat (Signal %1).</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keiner</translation>
    </message>
    <message>
        <source>%1 s behind this computer</source>
        <translation>%1 s hinter diesem Rechner</translation>
    </message>
    <message>
        <source>%1 s ahead of this computer</source>
        <translation>%1 s vor diesem Rechner</translation>
    </message>
    <message>
        <source>The instrument did not take the time %1: its clock shows %2.</source>
        <translation>Das Gerät hat die Zeit %1 nicht übernommen: Seine Uhr zeigt %2.</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Uhr</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Unterschied</translation>
    </message>
    <message>
        <source>The clock is set.</source>
        <translation>Die Uhr ist gestellt.</translation>
    </message>
    <message>
        <source>The clock was read.</source>
        <translation>Die Uhr wurde gelesen.</translation>
    </message>
    <message>
        <source>Waiting for the answer to request %1 of %2. Ctrl-C ends it.</source>
        <translation>Warte auf die Antwort auf Anfrage %1 von %2. Strg-C beendet es.</translation>
    </message>
    <message>
        <source>Everything was read.</source>
        <translation>Alles wurde gelesen.</translation>
    </message>
    <message>
        <source>It does not stop; run vesmar stop.</source>
        <translation>Es stoppt nicht; rufen Sie vesmar stop auf.</translation>
    </message>
    <message>
        <source>Monitored for the time given.</source>
        <translation>Die angegebene Zeit lang beobachtet.</translation>
    </message>
    <message>
        <source>Monitored until signal %1.</source>
        <translation>Bis Signal %1 beobachtet.</translation>
    </message>
    <message>
        <source>The instrument has restarted; that took %1 s.</source>
        <translation>Das Gerät ist neu gestartet; das dauerte %1 s.</translation>
    </message>
    <message>
        <source>%1 has been stopped. The instrument confirms that nothing runs any more.</source>
        <translation>%1 wurde gestoppt. Das Gerät bestätigt, dass nichts mehr läuft.</translation>
    </message>
    <message>
        <source>Nothing runs at the instrument, which it confirms.</source>
        <translation>Am Gerät läuft nichts; das Gerät bestätigt es.</translation>
    </message>
    <message>
        <source>Likely causes</source>
        <translation>Ursachen</translation>
    </message>
    <message>
        <source>Next step</source>
        <translation>Was zu tun ist</translation>
    </message>
    <message>
        <source>what was asked for was done</source>
        <translation>was verlangt war, ist getan</translation>
    </message>
    <message>
        <source>bad usage, or a file that cannot be used; nothing was sent</source>
        <translation>falscher Aufruf, oder eine unbrauchbare Datei; nichts wurde gesendet</translation>
    </message>
    <message>
        <source>the link did not come up in time</source>
        <translation>die Verbindung kam nicht rechtzeitig zustande</translation>
    </message>
    <message>
        <source>not done: update mode, or the output cannot be written in full</source>
        <translation>nicht getan: Update-Modus, oder die Ausgabe lässt sich nicht ganz schreiben</translation>
    </message>
    <message>
        <source>the instrument failed; a measurement has stopped</source>
        <translation>das Gerät ist gescheitert; eine Messung hat gestoppt</translation>
    </message>
    <message>
        <source>a measurement was aborted, and has stopped</source>
        <translation>eine Messung wurde abgebrochen und hat gestoppt</translation>
    </message>
    <message>
        <source>a measurement may still be running: switch the instrument off</source>
        <translation>eine Messung läuft vielleicht noch: Gerät ausschalten</translation>
    </message>
    <message>
        <source>the link was lost in the middle of it</source>
        <translation>die Verbindung ging mittendrin verloren</translation>
    </message>
    <message>
        <source>a measurement is done, but for a while no reading came</source>
        <translation>eine Messung ist abgeschlossen, aber eine Zeit lang kam kein Messwert</translation>
    </message>
    <message>
        <source>and a signal&apos;s number: ended by it; 141: nobody reads the output</source>
        <translation>und die Nummer eines Signals: dadurch beendet; 141: niemand liest die Ausgabe</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>Device name</source>
        <translation>Gerätename</translation>
    </message>
    <message>
        <source>Device code</source>
        <translation>Gerätecode</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Version code</source>
        <translation>Versionscode</translation>
    </message>
    <message>
        <source>Revision code</source>
        <translation>Revisionscode</translation>
    </message>
    <message>
        <source>Build number</source>
        <translation>Buildnummer</translation>
    </message>
    <message>
        <source>within %1 ms</source>
        <translation>in %1 ms</translation>
    </message>
    <message>
        <source>%1 is a device; name a file, or - for the standard input</source>
        <translation>%1 ist ein Gerät; geben Sie eine Datei an, oder - für die Standardeingabe</translation>
    </message>
    <message>
        <source>%1 is the log itself; give the recording a name of its own</source>
        <translation>%1 ist das Protokoll selbst; geben Sie der Aufzeichnung einen eigenen Namen</translation>
    </message>
    <message>
        <source>Recorded by vesmar decode from %1</source>
        <translation>Aufgezeichnet von vesmar decode aus %1</translation>
    </message>
    <message>
        <source>%1, line %2: %3</source>
        <translation>%1, Zeile %2: %3</translation>
    </message>
    <message>
        <source>%1: %2 more lines are damaged</source>
        <translation>%1: %2 weitere Zeilen sind beschädigt</translation>
    </message>
    <message>
        <source>%1: the reading was ended before an exchange with an instrument</source>
        <translation>%1: Das Lesen wurde beendet, bevor ein Austausch mit einem Gerät kam</translation>
    </message>
    <message>
        <source>%1 is empty; check that it is the right file</source>
        <translation>%1 ist leer; prüfen Sie, ob es die richtige Datei ist</translation>
    </message>
    <message>
        <source>%1 has no exchange with an instrument; check that it is a log of the library</source>
        <translation>%1 enthält keinen Austausch mit einem Gerät; prüfen Sie, ob es ein Protokoll der Bibliothek ist</translation>
    </message>
    <message>
        <source>The log is decoded as far as it was read</source>
        <translation>Das Protokoll ist entschlüsselt, soweit es gelesen wurde</translation>
    </message>
    <message>
        <source>The log is decoded</source>
        <translation>Das Protokoll ist entschlüsselt</translation>
    </message>
    <message>
        <source>Summary</source>
        <translation>Zusammenfassung</translation>
    </message>
    <message>
        <source>exchanges</source>
        <translation>Austausche</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>abgelehnt</translation>
    </message>
    <message>
        <source>damaged</source>
        <translation>beschädigt</translation>
    </message>
    <message>
        <source>without an answer</source>
        <translation>ohne Antwort</translation>
    </message>
    <message>
        <source>cut short</source>
        <translation>abgeschnitten</translation>
    </message>
    <message>
        <source>sent unasked</source>
        <translation>ungefragt</translation>
    </message>
    <message>
        <source>links</source>
        <translation>Verbindungen</translation>
    </message>
    <message>
        <source>longest</source>
        <translation>längster</translation>
    </message>
    <message>
        <source>within %1 ms, line %2</source>
        <translation>in %1 ms, Zeile %2</translation>
    </message>
    <message>
        <source>error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>%1, line %2</source>
        <translation>%1, Zeile %2</translation>
    </message>
    <message>
        <source>vesmar explain %1 tells what to do</source>
        <translation>vesmar explain %1 sagt, was zu tun ist</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time from %2 to %3 seconds, such as 90, 1.5min or 500ms</source>
        <translation>„%1“ ist keine Zeit von %2 bis %3 Sekunden, wie 90, 1.5min oder 500ms</translation>
    </message>
    <message>
        <source>Write every reading to this file as it comes; - for the standard output, and then for nothing else</source>
        <translation>Jeden Messwert gleich in diese Datei schreiben; - für die Standardausgabe, auf der dann nichts anderes steht</translation>
    </message>
    <message>
        <source>%1; %2 lists them</source>
        <translation>%1; %2 zeigt, was es gibt</translation>
    </message>
    <message>
        <source>%1; did you mean %2?</source>
        <translation>%1; meinten Sie %2?</translation>
    </message>
    <message>
        <source>there is no option %1</source>
        <translation>es gibt keine Option %1</translation>
    </message>
    <message>
        <source>there is no verb %1</source>
        <translation>es gibt kein Verb %1</translation>
    </message>
    <message>
        <source>Asking the doctor, which may take a minute.</source>
        <translation>Der Doktor wird gefragt; das kann eine Minute dauern.</translation>
    </message>
    <message>
        <source>Connecting, which takes ten seconds without an answer.</source>
        <translation>Verbindung wird aufgebaut; ohne Antwort dauert das zehn Sekunden.</translation>
    </message>
    <message>
        <source>%1 is there already; name another file, or add --overwrite</source>
        <translation>%1 gibt es schon; geben Sie eine andere Datei an, oder dazu --overwrite</translation>
    </message>
    <message>
        <source>The report is in %1.</source>
        <translation>Der Bericht steht in %1.</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>DATEI</translation>
    </message>
    <message>
        <source>LOG</source>
        <translation>PROTOKOLL</translation>
    </message>
    <message>
        <source>OUT</source>
        <translation>AUSGABE</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation>Argumente</translation>
    </message>
    <message>
        <source>REQUIRED</source>
        <translation>ERFORDERLICH</translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation>Unterbefehle</translation>
    </message>
    <message>
        <source>Write JSON, one object on each line</source>
        <translation>JSON schreiben, ein Objekt in jeder Zeile</translation>
    </message>
    <message>
        <source>Show the library&apos;s own trace on the error output</source>
        <translation>Die Mitschrift der Bibliothek auf der Fehlerausgabe zeigen</translation>
    </message>
    <message>
        <source>How long the link may take to come up (default 10)</source>
        <translation>Wie lange der Verbindungsaufbau dauern darf (sonst 10)</translation>
    </message>
    <message>
        <source>vesmar %1 --help tells of its options and of everything else.</source>
        <translation>vesmar %1 --help nennt die Optionen und alles Weitere.</translation>
    </message>
    <message>
        <source>How long the instrument may take to report it as done (default 30)</source>
        <translation>Wie lange das Gerät brauchen darf, bis es den Vollzug meldet (sonst 30)</translation>
    </message>
    <message>
        <source>TIME</source>
        <translation>ZEIT</translation>
    </message>
    <message>
        <source>NUMBER</source>
        <translation>ZAHL</translation>
    </message>
    <message>
        <source>Usage: vesmar measure %1 [OPTIONS]</source>
        <translation>Aufruf: vesmar measure %1 [OPTIONEN]</translation>
    </message>
    <message>
        <source>vesmar measure --help tells of the options that all functions have.</source>
        <translation>vesmar measure --help nennt die Optionen, die alle Funktionen haben.</translation>
    </message>
    <message>
        <source>%1 is required</source>
        <translation>%1 ist erforderlich</translation>
    </message>
    <message>
        <source>%1: 1 required %2 missing</source>
        <translation>%1: %2 fehlt</translation>
    </message>
    <message>
        <source>The following argument was not expected: %1</source>
        <translation>Dieses Argument war nicht erwartet: %1</translation>
    </message>
    <message>
        <source>Usage: vesmar VERB [OPTIONS]
       vesmar VERB --help
</source>
        <translation>Aufruf: vesmar VERB [OPTIONEN]
        vesmar VERB --help
</translation>
    </message>
    <message>
        <source>Exit status; VERB --help tells what it means there:</source>
        <translation>Exit-Status; VERB --help sagt, was er dort bedeutet:</translation>
    </message>
    <message>
        <source>Example, without an instrument:</source>
        <translation>Beispiel, ohne Gerät:</translation>
    </message>
    <message>
        <source>Drives a portable appliance tester on the serial line.</source>
        <translation>Steuert ein Prüfgerät für ortsveränderliche Geräte an der seriellen Leitung.</translation>
    </message>
    <message>
        <source>Print this help message and exit</source>
        <translation>Diese Hilfe ausgeben und enden</translation>
    </message>
    <message>
        <source>Display program version information and exit</source>
        <translation>Die Version des Programms ausgeben und enden</translation>
    </message>
    <message>
        <source>The same as behind the verb: write JSON</source>
        <translation>Dasselbe wie hinter dem Verb: JSON schreiben</translation>
    </message>
    <message>
        <source>no verb given; vesmar --help lists them</source>
        <translation>kein Verb angegeben; vesmar --help zeigt, was es gibt</translation>
    </message>
    <message>
        <source>Show or set the date of the last calibration</source>
        <translation>Das Datum der letzten Kalibrierung zeigen oder stellen</translation>
    </message>
    <message>
        <source>Usage: vesmar calibration [OPTIONS]
       vesmar calibration set DATE [OPTIONS]
</source>
        <translation>Aufruf: vesmar calibration [OPTIONEN]
        vesmar calibration set DATUM [OPTIONEN]
</translation>
    </message>
    <message>
        <source>
Shows the date of the last calibration. &quot;set&quot; sets it to DATE, as in 2026-11-21, in
the years 2001 to 2099. The instrument is restarted twice for it, by way of its
calibration mode, which takes a few seconds; a signal does not cut that short. It
succeeds only when the instrument itself has then reported that date.

JSON: see docs/events.md; events calibration and result.

Exit status: 0 shown, or set; 1 bad usage; 2 the link did not come up in time; 3 the
instrument is in update mode, or the output cannot be written; 4 the instrument does
not report the date set; 7 the link was lost before it did; 128 and the signal&apos;s
number where a signal came first.

Example, without an instrument:
  vesmar-simulator run -- vesmar calibration set 2026-11-21
</source>
        <translation>
Zeigt das Datum der letzten Kalibrierung. „set“ stellt es auf DATUM, wie 2026-11-21, in
den Jahren 2001 bis 2099. Dafür wird das Gerät zweimal neu gestartet, auf dem Weg über
seinen Kalibriermodus, was einige Sekunden dauert; ein Signal kürzt das nicht ab. Es
gelingt nur, wenn danach das Gerät selbst dieses Datum gemeldet hat.

JSON: siehe docs/events.md; Ereignisse calibration und result.

Exit-Status: 0 gezeigt oder gestellt; 1 falscher Aufruf; 2 die Verbindung kam nicht
rechtzeitig zustande; 3 das Gerät ist im Update-Modus, oder die Ausgabe lässt sich nicht
schreiben; 4 das Gerät meldet das gestellte Datum nicht; 7 die Verbindung ging vorher
verloren; 128 und die Nummer des Signals, wenn ein Signal zuvorkam.

Beispiel, ohne Gerät:
  vesmar-simulator run -- vesmar calibration set 2026-11-21
</translation>
    </message>
    <message>
        <source>Set the date</source>
        <translation>Das Datum stellen</translation>
    </message>
    <message>
        <source>What to set it to</source>
        <translation>Worauf es gestellt wird</translation>
    </message>
    <message>
        <source>Show or set the instrument&apos;s clock</source>
        <translation>Die Uhr des Geräts zeigen oder stellen</translation>
    </message>
    <message>
        <source>Usage: vesmar clock [OPTIONS]
       vesmar clock set [DATETIME|now] [OPTIONS]
</source>
        <translation>Aufruf: vesmar clock [OPTIONEN]
        vesmar clock set [ZEITPUNKT|now] [OPTIONEN]
</translation>
    </message>
    <message>
        <source>
Shows the instrument&apos;s clock, and by how many seconds it is ahead of this computer&apos;s
or behind it. The instrument knows no time zone: both are what a clock on the wall
shows. &quot;set&quot; sets it to DATETIME, as in 2026-11-21T18:00:00 or with a blank, in the
years 2001 to 2099, or without one to this computer&apos;s; it succeeds only when the
instrument itself has then reported that time, running, to within 2 seconds.

JSON: see docs/events.md; events clock and result.

Exit status: 0 shown, or set; 1 bad usage; 2 the link did not come up in time; 3 the
instrument is in update mode, or the output cannot be written; 4 the instrument does
not report the time set; 7 the link was lost before it did; 128 and the signal&apos;s
number where a signal came first.

Example, without an instrument:
  vesmar-simulator run -- vesmar clock set 2026-11-21T18:00:00
</source>
        <translation>
Zeigt die Uhr des Geräts, und um wie viele Sekunden sie der dieses Rechners voraus oder
hinterher ist. Das Gerät kennt keine Zeitzone: Beide zeigen, was eine Uhr an der Wand
zeigt. „set“ stellt sie auf ZEITPUNKT, wie 2026-11-21T18:00:00 oder mit Leerzeichen, in
den Jahren 2001 bis 2099, oder ohne Angabe auf die dieses Rechners; es gelingt nur, wenn
danach das Gerät selbst diese Zeit, laufend, auf 2 Sekunden genau gemeldet hat.

JSON: siehe docs/events.md; Ereignisse clock und result.

Exit-Status: 0 gezeigt oder gestellt; 1 falscher Aufruf; 2 die Verbindung kam nicht
rechtzeitig zustande; 3 das Gerät ist im Update-Modus, oder die Ausgabe lässt sich nicht
schreiben; 4 das Gerät meldet die gestellte Zeit nicht; 7 die Verbindung ging vorher
verloren; 128 und die Nummer des Signals, wenn ein Signal zuvorkam.

Beispiel, ohne Gerät:
  vesmar-simulator run -- vesmar clock set 2026-11-21T18:00:00
</translation>
    </message>
    <message>
        <source>Set the clock</source>
        <translation>Die Uhr stellen</translation>
    </message>
    <message>
        <source>What to set it to (default: now)</source>
        <translation>Worauf sie gestellt wird (sonst: jetzt)</translation>
    </message>
    <message>
        <source>Tell in words what a log of the library has kept</source>
        <translation>In Worten sagen, was ein Protokoll der Bibliothek enthält</translation>
    </message>
    <message>
        <source>Usage: vesmar decode FILE [--scenario OUT] [--json]
</source>
        <translation>Aufruf: vesmar decode DATEI [--scenario AUSGABE] [--json]
</translation>
    </message>
    <message>
        <source>Reads a log of the library, of a field unit or of vesmar VERB --trace 2&gt; FILE; &quot;-&quot; is
the standard input. Tells each exchange with the instrument in words, what was wrong
with it and how long it took, and at the end what was found. Lines of others, their
beginnings of lines and colours do not matter. No instrument is needed. Ctrl-C ends the
reading of a log that still grows.

--scenario records the exchanges for vesmar-simulator --playback OUT.

JSON: see docs/events.md; events exchange, unasked, note and result.

Exit status: 0 decoded; 1 bad usage, a file that cannot be read or written, or a damaged
log: what is whole is told all the same, but not recorded; 3 the output cannot be
written.

Example:
  vesmar-simulator run -- vesmar info --trace 2&gt; log
  vesmar decode log
</source>
        <translation>Liest ein Protokoll der Bibliothek, von einem Gerät im Einsatz oder von
vesmar VERB --trace 2&gt; DATEI; „-“ ist die Standardeingabe. Sagt jeden Austausch mit dem
Gerät in Worten, was daran falsch war und wie lange er dauerte, und am Ende, was gefunden
wurde. Zeilen anderer Herkunft, Zeilenanfänge und Farben stören nicht. Ein Gerät ist nicht
nötig. Strg-C beendet das Lesen eines Protokolls, das noch wächst.

--scenario zeichnet die Austausche für vesmar-simulator --playback AUSGABE auf.

JSON: siehe docs/events.md; Ereignisse exchange, unasked, note und result.

Exit-Status: 0 entschlüsselt; 1 falscher Aufruf, eine Datei, die sich nicht lesen oder
schreiben lässt, oder ein beschädigtes Protokoll: Was ganz ist, wird trotzdem gesagt, aber
nicht aufgezeichnet; 3 die Ausgabe lässt sich nicht schreiben.

Beispiel:
  vesmar-simulator run -- vesmar info --trace 2&gt; log
  vesmar decode log
</translation>
    </message>
    <message>
        <source>the standard input</source>
        <translation>die Standardeingabe</translation>
    </message>
    <message>
        <source>The log; - for the standard input</source>
        <translation>Das Protokoll; - für die Standardeingabe</translation>
    </message>
    <message>
        <source>Record the exchanges for vesmar-simulator --playback</source>
        <translation>Die Austausche für vesmar-simulator --playback aufzeichnen</translation>
    </message>
    <message>
        <source>a file needs a name</source>
        <translation>eine Datei braucht einen Namen</translation>
    </message>
    <message>
        <source>Find out what is wrong with the link</source>
        <translation>Herausfinden, was der Verbindung fehlt</translation>
    </message>
    <message>
        <source>Usage: vesmar doctor [--json]
</source>
        <translation>Aufruf: vesmar doctor [--json]
</translation>
    </message>
    <message>
        <source>Looks at the serial device, who may use it and who holds it, asks the instrument for
its status 50 times, shows how it answered and how long that took, and says what is
wrong and what to do. Where another program holds the device, nothing is sent.

JSON: see docs/events.md; events device, permissions, holders, answers, condition,
and result.

Exit status: 0 link and instrument are sound; 1 bad usage; 2 no link; 3 the link is
sound, but the instrument is in update mode or in another one that is not its normal
mode, or the output cannot be written; 4 the link is unreliable or too slow, or the
instrument reports an error; 6 a function is active that no program attends.

Example, without an instrument:
  vesmar-simulator run -- vesmar doctor
</source>
        <translation>Sieht sich die serielle Schnittstelle an, wer sie benutzen darf und wer sie belegt, fragt
das Gerät 50-mal nach seinem Status, zeigt, wie es antwortete und wie lange das dauerte,
und sagt, was nicht stimmt und was zu tun ist. Wenn ein anderes Programm die Schnittstelle
belegt, wird nichts gesendet.

JSON: siehe docs/events.md; Ereignisse device, permissions, holders, answers, condition
und result.

Exit-Status: 0 Verbindung und Gerät sind in Ordnung; 1 falscher Aufruf; 2 keine
Verbindung; 3 die Verbindung ist in Ordnung, aber das Gerät ist im Update-Modus oder in
einem anderen, der nicht sein normaler ist, oder die Ausgabe lässt sich nicht schreiben;
4 die Verbindung ist unzuverlässig oder zu langsam, oder das Gerät meldet einen Fehler;
6 eine Funktion ist aktiv, die kein Programm beaufsichtigt.

Beispiel, ohne Gerät:
  vesmar-simulator run -- vesmar doctor
</translation>
    </message>
    <message>
        <source>Tell what an error means and what to do</source>
        <translation>Sagen, was ein Fehler bedeutet und was zu tun ist</translation>
    </message>
    <message>
        <source>Usage: vesmar explain [CODE|NAME] [--json]
</source>
        <translation>Aufruf: vesmar explain [NUMMER|NAME] [--json]
</translation>
    </message>
    <message>
        <source>Tells what has happened when ErrorCode is CODE (or has that NAME), what is likely to
have caused it, and the next step. Without one, lists every error. No instrument is
needed.

JSON: see docs/events.md; events explanation, one for each error, and result.

Exit status: 0 told; 1 bad usage, an unknown error included; 3 the output cannot be
written.

Examples:
  vesmar explain 303
  vesmar explain CommunicationRecovery
</source>
        <translation>Sagt, was geschehen ist, wenn ErrorCode NUMMER ist (oder diesen NAMEN hat), was die Ursache
sein kann, und was zu tun ist. Ohne Angabe werden alle Fehler aufgezählt. Ein Gerät ist
nicht nötig.

JSON: siehe docs/events.md; Ereignisse explanation, eines für jeden Fehler, und result.

Exit-Status: 0 gesagt; 1 falscher Aufruf, auch ein unbekannter Fehler; 3 die Ausgabe lässt
sich nicht schreiben.

Beispiele:
  vesmar explain 303
  vesmar explain CommunicationRecovery
</translation>
    </message>
    <message>
        <source>What happened</source>
        <translation>Was geschah</translation>
    </message>
    <message>
        <source>The error&apos;s number or name</source>
        <translation>Nummer oder Name des Fehlers</translation>
    </message>
    <message>
        <source>there is no error &quot;%1&quot;; vesmar explain lists them</source>
        <translation>es gibt keinen Fehler „%1“; vesmar explain zählt sie auf</translation>
    </message>
    <message>
        <source>Everything was told.</source>
        <translation>Alles wurde gesagt.</translation>
    </message>
    <message>
        <source>Show the instrument&apos;s identity and clocks</source>
        <translation>Kennung und Uhren des Geräts zeigen</translation>
    </message>
    <message>
        <source>Usage: vesmar info [--json] [--timeout TIME] [--trace]
</source>
        <translation>Aufruf: vesmar info [--json] [--timeout ZEIT] [--trace]
</translation>
    </message>
    <message>
        <source>Connects, waits until the identity and both clocks have been read, shows them with
the instrument&apos;s mode and error, and ends. A function that is active while no program
attends it is told on the error output, and told to stop.

JSON: see docs/events.md; events unattended, info and result.

Exit status: 0 shown; 1 bad usage; 2 the link did not come up in time; 3 the
instrument is in update mode, where its clocks cannot be read, or the output cannot
be written; 6 a function that no program attends does not stop.

Example, without an instrument:
  vesmar-simulator run -- vesmar info --json
</source>
        <translation>Baut die Verbindung auf, wartet, bis die Kennung und beide Uhren gelesen sind, zeigt sie
mit Modus und Fehler des Geräts, und endet. Eine Funktion, die aktiv ist, ohne dass ein
Programm sie beaufsichtigt, wird auf der Fehlerausgabe genannt und gestoppt.

JSON: siehe docs/events.md; Ereignisse unattended, info und result.

Exit-Status: 0 gezeigt; 1 falscher Aufruf; 2 die Verbindung kam nicht rechtzeitig
zustande; 3 das Gerät ist im Update-Modus, in dem seine Uhren nicht lesbar sind, oder die
Ausgabe lässt sich nicht schreiben; 6 eine Funktion ohne Aufsicht stoppt nicht.

Beispiel, ohne Gerät:
  vesmar-simulator run -- vesmar info --json
</translation>
    </message>
    <message>
        <source>Run a measurement, from its settings to its result</source>
        <translation>Eine Messung ausführen, von den Einstellungen bis zum Ergebnis</translation>
    </message>
    <message>
        <source>Usage: vesmar measure FUNCTION [OPTIONS]
       vesmar measure FUNCTION --help
</source>
        <translation>Aufruf: vesmar measure FUNKTION [OPTIONEN]
        vesmar measure FUNKTION --help
</translation>
    </message>
    <message>
        <source>
Connects, prepares and starts the function, watches it to its end, and waits until
the instrument is confirmed to have stopped. Readings are in the instrument&apos;s own
units; a dash is no value. --csv takes a regular file, and overwrites it.

While hv runs, a DANGEROUS VOLTAGE is present. When no reading comes for a second or
longer, the program says so while that lasts, and in the result.

Ctrl-C, SIGTERM, SIGHUP (a closed terminal) and an output that nobody reads any more
abort the measurement; the program ends once the instrument is confirmed to have
stopped. A second signal does not cut that short. Ctrl-Z and Ctrl-\ do nothing. If the
program is killed during hv, the program vesmar-guard stops the instrument.

JSON: see docs/events.md; events status, error, reading, gap and result.

Exit status:
  0  measured, and the instrument has stopped
  1  bad usage, or a file that cannot be written; nothing was sent
  2  the link did not come up in time
  3  the instrument is in update mode, vesmar-guard is missing, or not all of the output
     could be written
  4  the measurement failed (the error is told); the instrument has stopped
  5  aborted; the instrument has stopped
  6  the stop is not confirmed: the instrument may still be running, and high voltage
     may be on; switch it off at the instrument
  7  the link was lost; the message tells whether it came back and the instrument has
     stopped, or its state is unknown
  8  measured, and the instrument has stopped, but for a while no reading came
  128 and the signal&apos;s number where a signal came before the link was up

Example, without an instrument:
  vesmar-simulator run -- vesmar measure rpe --current 2 --method 1 --time 3
</source>
        <translation>
Baut die Verbindung auf, bereitet die Funktion vor und startet sie, verfolgt sie bis zum
Ende und wartet, bis bestätigt ist, dass das Gerät gestoppt hat. Messwerte stehen in den
eigenen Einheiten des Geräts; ein Strich ist kein Wert. --csv nimmt eine gewöhnliche Datei
und überschreibt sie.

Während hv läuft, liegt eine GEFÄHRLICHE SPANNUNG an. Wenn eine Sekunde oder länger kein
Messwert kommt, sagt das Programm es, solange es dauert, und im Ergebnis.

Strg-C, SIGTERM, SIGHUP (ein geschlossenes Terminal) und eine Ausgabe, die niemand mehr
liest, brechen die Messung ab; das Programm endet, sobald bestätigt ist, dass das Gerät
gestoppt hat. Ein zweites Signal kürzt das nicht ab. Strg-Z und Strg-\ bewirken nichts.
Wird das Programm während hv abgeschossen, stoppt das Programm vesmar-guard das Gerät.

JSON: siehe docs/events.md; Ereignisse status, error, reading, gap und result.

Exit-Status:
  0  gemessen, und das Gerät hat gestoppt
  1  falscher Aufruf, oder eine Datei, die sich nicht schreiben lässt; nichts wurde
     gesendet
  2  die Verbindung kam nicht rechtzeitig zustande
  3  das Gerät ist im Update-Modus, vesmar-guard fehlt, oder die Ausgabe ließ sich nicht
     ganz schreiben
  4  die Messung ist gescheitert (der Fehler wird genannt); das Gerät hat gestoppt
  5  abgebrochen; das Gerät hat gestoppt
  6  der Stopp ist nicht bestätigt: Das Gerät läuft vielleicht noch, und Hochspannung kann
     anliegen; schalten Sie es am Gerät aus
  7  die Verbindung ging verloren; die Meldung sagt, ob sie zurückkam und das Gerät
     gestoppt hat, oder ob sein Zustand unbekannt ist
  8  gemessen, und das Gerät hat gestoppt, aber eine Zeit lang kam kein Messwert
  128 und die Nummer des Signals, wenn ein Signal dem Verbindungsaufbau zuvorkam

Beispiel, ohne Gerät:
  vesmar-simulator run -- vesmar measure rpe --current 2 --method 1 --time 3
</translation>
    </message>
    <message>
        <source>How long preparing, and then starting, may take (default 10)</source>
        <translation>Wie lange das Vorbereiten und dann das Starten dauern darf (sonst 10)</translation>
    </message>
    <message>
        <source>How long stopping, or the way back of a lost link, may take (default 15)</source>
        <translation>Wie lange das Stoppen oder die Rückkehr einer verlorenen Verbindung dauern darf (sonst 15)</translation>
    </message>
    <message>
        <source>Show every change of every property as it happens</source>
        <translation>Jede Änderung jeder Eigenschaft sofort zeigen</translation>
    </message>
    <message>
        <source>Usage: vesmar monitor [--for TIME] [--json] [--timeout TIME] [--trace]
</source>
        <translation>Aufruf: vesmar monitor [--for ZEIT] [--json] [--timeout ZEIT] [--trace]
</translation>
    </message>
    <message>
        <source>Connects, and shows each change with the time at which it was told, until Ctrl-C,
SIGTERM, SIGHUP or the time given. A loss of the link shows as ErrorCode 103 and,
if it lasts, 100, and the program goes on. Whenever the identity has been read, the
mode, the error and the calibration date are shown as they stand, changed or not. An
instrument in update mode is pointed out on the error output.
A function that is active while no program attends it is told there, too, and told to
stop. Readings are in the instrument&apos;s own units.

JSON: see docs/events.md; events unattended, change and result.

Exit status: 0 ended by a signal or after the time given; 1 bad usage; 2 the link
did not come up in time; 3 the output cannot be written; 128 and the signal&apos;s
number where a signal came before the link was up, 141 where the output&apos;s reader
went away.

Example, without an instrument, its plug pulled after 3 s and put back after 25 s:
  vesmar-simulator run --at 3:unplug --at 25:plug -- vesmar monitor --for 40
</source>
        <translation>Baut die Verbindung auf und zeigt jede Änderung mit der Zeit, zu der sie gemeldet wurde,
bis Strg-C, SIGTERM, SIGHUP oder zum Ablauf der angegebenen Zeit. Ein Verlust der
Verbindung zeigt sich als ErrorCode 103 und, wenn er dauert, 100, und das Programm läuft
weiter. Immer wenn die Kennung gelesen ist, werden Modus, Fehler und Kalibrierdatum
gezeigt, ob geändert oder nicht. Auf ein Gerät im Update-Modus weist die Fehlerausgabe
hin.
Auch eine Funktion, die aktiv ist, ohne dass ein Programm sie beaufsichtigt, wird dort
genannt, und gestoppt. Messwerte stehen in den eigenen Einheiten des Geräts.

JSON: siehe docs/events.md; Ereignisse unattended, change und result.

Exit-Status: 0 durch ein Signal oder nach der angegebenen Zeit beendet; 1 falscher
Aufruf; 2 die Verbindung kam nicht rechtzeitig zustande; 3 die Ausgabe lässt sich nicht
schreiben; 128 und die Nummer des Signals, wenn ein Signal dem Verbindungsaufbau zuvorkam,
141, wenn der Leser der Ausgabe weggegangen ist.

Beispiel, ohne Gerät, mit einem Stecker, der nach 3 s gezogen und nach 25 s gesteckt wird:
  vesmar-simulator run --at 3:unplug --at 25:plug -- vesmar monitor --for 40
</translation>
    </message>
    <message>
        <source>End after so long, counted from the moment that the link is up</source>
        <translation>Nach so langer Zeit enden, gezählt ab dem Aufbau der Verbindung</translation>
    </message>
    <message>
        <source>Write one file for a report of a bug</source>
        <translation>Eine Datei für die Meldung eines Fehlers schreiben</translation>
    </message>
    <message>
        <source>Usage: vesmar report [FILE] [--log LOG] [--overwrite] [--json]
</source>
        <translation>Aufruf: vesmar report [DATEI] [--log PROTOKOLL] [--overwrite] [--json]
</translation>
    </message>
    <message>
        <source>Writes a text with the versions, with what vesmar doctor finds, with the instrument&apos;s
identity and with the latest trace, decoded. What cannot be found out, without an
instrument for example, stands in the file in so many words. The report is in English.

FILE is vesmar-report-DATE-TIME.txt unless it is given; - is the standard output. The
trace is the end of LOG, which is kept by a field unit or by vesmar VERB --trace 2&gt; LOG;
without --log, it is that of a connection that is made for it.

JSON: see docs/events.md; event result.

Exit status: 0 written; 1 bad usage, or a file that is there already or cannot be
written; 3 the output cannot be written.

Example, without an instrument:
  vesmar-simulator run -- vesmar report -
</source>
        <translation>Schreibt einen Text mit den Versionen, mit dem, was vesmar doctor findet, mit der Kennung
des Geräts und mit der letzten Mitschrift, entschlüsselt. Was nicht herauszufinden ist,
etwa ohne Gerät, steht ausdrücklich in der Datei. Der Bericht ist auf Englisch.

DATEI ist ohne Angabe vesmar-report-DATUM-ZEIT.txt; - ist die Standardausgabe. Die
Mitschrift ist das Ende von PROTOKOLL, wie es ein Gerät im Einsatz oder
vesmar VERB --trace 2&gt; PROTOKOLL führt; ohne --log ist es die einer Verbindung, die dafür
aufgebaut wird.

JSON: siehe docs/events.md; Ereignis result.

Exit-Status: 0 geschrieben; 1 falscher Aufruf, oder eine Datei, die es schon gibt oder die
sich nicht schreiben lässt; 3 die Ausgabe lässt sich nicht schreiben.

Beispiel, ohne Gerät:
  vesmar-simulator run -- vesmar report -
</translation>
    </message>
    <message>
        <source>Where to write it; - for the standard output</source>
        <translation>Wohin er geschrieben wird; - für die Standardausgabe</translation>
    </message>
    <message>
        <source>The log with the trace</source>
        <translation>Das Protokoll mit der Mitschrift</translation>
    </message>
    <message>
        <source>Overwrite the file if it is there already</source>
        <translation>Die Datei überschreiben, wenn es sie schon gibt</translation>
    </message>
    <message>
        <source>the standard output is either JSON or the report; name a file</source>
        <translation>die Standardausgabe ist entweder JSON oder der Bericht; geben Sie eine Datei an</translation>
    </message>
    <message>
        <source>Restart the instrument into its normal mode</source>
        <translation>Das Gerät in seinen normalen Modus neu starten</translation>
    </message>
    <message>
        <source>Usage: vesmar restart [OPTIONS]
</source>
        <translation>Aufruf: vesmar restart [OPTIONEN]
</translation>
    </message>
    <message>
        <source>Restarts the instrument, waits until its identity has been read anew and it is in its
normal mode, and says how long that took. It also brings back an instrument that was
left in update mode with its firmware still whole.

JSON: see docs/events.md; events restart and result.

Exit status: 0 restarted; 1 bad usage; 2 the link did not come up in time; 3 the
output cannot be written; 4 the instrument does not reach its normal mode in time; 7
the link was lost; 128 and the signal&apos;s number where a signal came first.

Example, without an instrument:
  vesmar-simulator run --restart-time 1500 -- vesmar restart
</source>
        <translation>Startet das Gerät neu, wartet, bis seine Kennung neu gelesen und es in seinem normalen
Modus ist, und sagt, wie lange das dauerte. Das holt auch ein Gerät zurück, das im
Update-Modus gelassen wurde und dessen Firmware noch ganz ist.

JSON: siehe docs/events.md; Ereignisse restart und result.

Exit-Status: 0 neu gestartet; 1 falscher Aufruf; 2 die Verbindung kam nicht rechtzeitig
zustande; 3 die Ausgabe lässt sich nicht schreiben; 4 das Gerät erreicht seinen normalen
Modus nicht rechtzeitig; 7 die Verbindung ging verloren; 128 und die Nummer des Signals,
wenn ein Signal zuvorkam.

Beispiel, ohne Gerät:
  vesmar-simulator run --restart-time 1500 -- vesmar restart
</translation>
    </message>
    <message>
        <source>End whatever runs at the instrument, and prove it</source>
        <translation>Beenden, was am Gerät läuft, und es nachweisen</translation>
    </message>
    <message>
        <source>Usage: vesmar stop [--json] [--timeout TIME] [--trace]
</source>
        <translation>Aufruf: vesmar stop [--json] [--timeout ZEIT] [--trace]
</translation>
    </message>
    <message>
        <source>Ends the function that is active at the instrument, whoever has started it, and waits
for the proof: the instrument itself reports that no function is active any more. It
begins as soon as the line is open, and gives the instrument 20 seconds. A program
that holds the line is named; end that program first.

JSON: see docs/events.md; events unattended, stop and result.

Exit status: 0 it is proved that nothing runs; 1 bad usage; 2 the link did not come up
in time, or another program holds the line, so that nothing is known; 3 the instrument
is in update mode, or the output cannot be written; 6, 7 it is not proved that nothing
runs (7: the link is lost): switch the instrument off; 128 and the signal&apos;s number
where a signal came first.

Example, without an instrument:
  vesmar-simulator run --at 0:&quot;function 9&quot; -- vesmar stop
</source>
        <translation>Beendet die Funktion, die am Gerät aktiv ist, wer immer sie gestartet hat, und wartet auf
den Nachweis: Das Gerät selbst meldet, dass keine Funktion mehr aktiv ist. Es beginnt,
sobald die Leitung offen ist, und gibt dem Gerät 20 Sekunden. Ein Programm, das die
Leitung belegt, wird genannt; beenden Sie zuerst dieses.

JSON: siehe docs/events.md; Ereignisse unattended, stop und result.

Exit-Status: 0 es ist nachgewiesen, dass nichts läuft; 1 falscher Aufruf; 2 die Verbindung
kam nicht rechtzeitig zustande, oder ein anderes Programm belegt die Leitung, so dass
nichts bekannt ist; 3 das Gerät ist im Update-Modus, oder die Ausgabe lässt sich nicht
schreiben; 6, 7 es ist nicht nachgewiesen, dass nichts läuft (7: die Verbindung ist
verloren): Schalten Sie das Gerät aus; 128 und die Nummer des Signals, wenn ein Signal
zuvorkam.

Beispiel, ohne Gerät:
  vesmar-simulator run --at 0:&quot;function 9&quot; -- vesmar stop
</translation>
    </message>
    <message>
        <source>Send the instrument new firmware</source>
        <translation>Dem Gerät neue Firmware senden</translation>
    </message>
    <message>
        <source>Usage: vesmar update IMAGE --confirmation FILE [OPTIONS]
</source>
        <translation>Aufruf: vesmar update ABBILD --confirmation DATEI [OPTIONEN]
</translation>
    </message>
    <message>
        <source>
Checks both files before anything is sent: the image is a whole number of sectors of
512 bytes, the confirmation has 2 bytes or more. Then shows the instrument&apos;s version,
sends it the image in update mode, and waits until it is back in its normal mode with
the version that it now reports. An instrument that was left in update mode is taken
up there.

An image that is cut short leaves the instrument without firmware. So while it is sent,
Ctrl-C, SIGTERM and SIGHUP (a closed terminal) do nothing but get an answer, and Ctrl-Z
and Ctrl-\ do nothing at all. Do not switch the instrument off.

--offline sends the image without the library&apos;s machine behind it: for an instrument
that does not tell its version any more. It does not insist on the link before, and no
signal ends it once it has begun.

JSON: see docs/events.md; events status, error, progress and result.

Exit status:
  0  the instrument is back with its firmware
  1  bad usage, or a file that cannot be used; nothing was sent
  2  the link did not come up in time
  3  done, but not all of the output could be written
  4  the update failed (the error is told), or the instrument stays in update mode
  7  the link was lost before the first sector, or the instrument did not come back
  128 and the signal&apos;s number where a signal ended it before the first sector, or after
  the confirmation

Example, without an instrument:
  head -c 4096 /dev/urandom &gt; image; vesmar-simulator confirmation image &gt; confirmation
  vesmar-simulator run -- vesmar update image --confirmation confirmation
</source>
        <translation>
Prüft beide Dateien, bevor etwas gesendet wird: Das Abbild hat eine ganze Zahl von
Sektoren zu 512 Bytes, die Bestätigung mindestens 2 Bytes. Zeigt dann die Version des
Geräts, sendet ihm im Update-Modus das Abbild und wartet, bis es mit der Version, die es
nun meldet, in seinen normalen Modus zurückgekehrt ist. Ein Gerät, das im Update-Modus
gelassen wurde, wird dort aufgenommen.

Ein abgeschnittenes Abbild lässt das Gerät ohne Firmware zurück. Während es gesendet wird,
bewirken Strg-C, SIGTERM und SIGHUP (ein geschlossenes Terminal) daher nichts als eine
Antwort, und Strg-Z und Strg-\ gar nichts. Schalten Sie das Gerät nicht aus.

--offline sendet das Abbild ohne den Zustandsautomaten der Bibliothek: für ein Gerät, das
seine Version nicht mehr meldet. Es besteht vorher nicht auf der Verbindung, und hat es
begonnen, beendet es kein Signal.

JSON: siehe docs/events.md; Ereignisse status, error, progress und result.

Exit-Status:
  0  das Gerät ist mit seiner Firmware zurück
  1  falscher Aufruf, oder eine unbrauchbare Datei; nichts wurde gesendet
  2  die Verbindung kam nicht rechtzeitig zustande
  3  getan, aber die Ausgabe ließ sich nicht ganz schreiben
  4  das Update ist gescheitert (der Fehler wird genannt), oder das Gerät bleibt im
     Update-Modus
  7  die Verbindung ging vor dem ersten Sektor verloren, oder das Gerät kam nicht zurück
  128 und die Nummer des Signals, wenn ein Signal es vor dem ersten Sektor oder nach der
  Bestätigung beendet hat

Beispiel, ohne Gerät:
  head -c 4096 /dev/urandom &gt; image; vesmar-simulator confirmation image &gt; confirmation
  vesmar-simulator run -- vesmar update image --confirmation confirmation
</translation>
    </message>
    <message>
        <source>The firmware</source>
        <translation>Die Firmware</translation>
    </message>
    <message>
        <source>The file that confirms the firmware; its last two bytes are sent</source>
        <translation>Die Datei, die die Firmware bestätigt; ihre letzten zwei Bytes werden gesendet</translation>
    </message>
    <message>
        <source>Send it without the library&apos;s machine behind it</source>
        <translation>Ohne den Zustandsautomaten der Bibliothek senden</translation>
    </message>
    <message>
        <source>Asking for the status. This takes a second, and minutes where answers are late.</source>
        <translation>Der Status wird abgefragt. Das dauert eine Sekunde, und Minuten, wenn Antworten spät kommen.</translation>
    </message>
    <message>
        <source>%1: lines that are not decoded because they are damaged: %2, and no recording is written; get the whole log, or remove them</source>
        <translation>%1: Zeilen, die nicht entschlüsselt sind, weil sie beschädigt sind: %2, und keine Aufzeichnung wird geschrieben; besorgen Sie das ganze Protokoll, oder entfernen Sie sie</translation>
    </message>
    <message>
        <source>%1: lines that are not decoded because they are damaged: %2; get the whole log, or remove them</source>
        <translation>%1: Zeilen, die nicht entschlüsselt sind, weil sie beschädigt sind: %2; besorgen Sie das ganze Protokoll, oder entfernen Sie sie</translation>
    </message>
    <message>
        <source>%1, and %2 entries are recorded, of all %3 links.</source>
        <translation>%1, und %2 Einträge sind aufgezeichnet, aus allen %3 Verbindungen.</translation>
    </message>
    <message>
        <source>%1, and %2 entries are recorded.</source>
        <translation>%1, und %2 Einträge sind aufgezeichnet.</translation>
    </message>
    <message>
        <source>%1; members of %2 may</source>
        <translation>%1; Mitglieder von %2 dürfen es</translation>
    </message>
    <message>
        <source>CODE|NAME</source>
        <translation>NUMMER|NAME</translation>
    </message>
    <message>
        <source>DATE</source>
        <translation>DATUM</translation>
    </message>
    <message>
        <source>DATETIME</source>
        <translation>ZEITPUNKT</translation>
    </message>
    <message>
        <source>IMAGE</source>
        <translation>ABBILD</translation>
    </message>
    <message>
        <source>%1; required</source>
        <translation>%1; erforderlich</translation>
    </message>
    <message>
        <source>%1 (default %2)</source>
        <translation>%1 (sonst %2)</translation>
    </message>
    <message>
        <source>%1, or &quot;%2&quot;: until Ctrl-C</source>
        <translation>%1, oder „%2“: bis Strg-C</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not allowed. %2</source>
        <translation>„%1“ ist nicht erlaubt. %2</translation>
    </message>
    <message>
        <source>%1 of %2 s</source>
        <translation>%1 von %2 s</translation>
    </message>
    <message>
        <source>no function given; it is one of %1</source>
        <translation>keine Funktion angegeben; möglich ist: %1</translation>
    </message>
    <message>
        <source>no function: &quot;%1&quot;; it is one of %2</source>
        <translation>keine Funktion: „%1“; möglich ist: %2</translation>
    </message>
    <message>
        <source>None of %1 requests got a proper answer: %2 got a refusal, %3 a damaged answer and %4 none. Check cable and power, and that the instrument is of the right kind.</source>
        <translation>Keine von %1 Anfragen wurde richtig beantwortet: %2 wurden abgelehnt, %3 beschädigt beantwortet und %4 gar nicht. Prüfen Sie Kabel und Versorgung, und ob es die richtige Art von Gerät ist.</translation>
    </message>
    <message>
        <source>The link is unreliable: of %1 requests, %2 got a refusal, %3 a damaged answer and %4 none. Check cable, shield and plugs, and run vesmar doctor again.</source>
        <translation>Die Verbindung ist unzuverlässig: Von %1 Anfragen wurden %2 abgelehnt, %3 beschädigt beantwortet und %4 gar nicht. Prüfen Sie Kabel, Schirm und Stecker und rufen Sie vesmar doctor erneut auf.</translation>
    </message>
    <message>
        <source>%1 is given more than once</source>
        <translation>%1 ist mehrfach angegeben</translation>
    </message>
    <message>
        <source>the standard output is either JSON or CSV; name a file, or leave --json out</source>
        <translation>die Standardausgabe ist entweder JSON oder CSV; eine Datei nennen oder --json weglassen</translation>
    </message>
</context>
</TS>
