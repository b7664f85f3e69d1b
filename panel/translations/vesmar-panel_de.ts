<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Pages</name>
    <message>
        <source>Connection</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Panel::ConnectionPage</name>
    <message>
        <source>Connection</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Panel::FailureCard</name>
    <message>
        <source>Likely causes:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What to do:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Panel::MainWindow</name>
    <message>
        <source>Light / dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>⚡  High voltage. Do not touch the appliance.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Space bar or Esc stops.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Whatever is under way is being ended. The window closes when the instrument is confirmed to have stopped.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VesmarClient</name>
    <message>
        <source>RLN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>IEC</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Protective-earth resistance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Insulation resistance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Substitute leakage current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Protective-conductor current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Differential current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Touch current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Power</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>High-voltage test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Residual-current device: Ub/Re, or Ia/Ta</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Residual-current device, IEC variant</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mains</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument&apos;s number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What is done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Phase</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long to measure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Method</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Voltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time offset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Added to the time for the voltage to rise</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Re</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>For ia-ta-1 and ia-ta-2: the Re that ub-re has given</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measure Re first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>For ia-ta-1 and ia-ta-2: run a ub-re test first, and take its Re</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clean-up time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long the instrument is left alone for a clean-up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Swap L and N</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Swap line and neutral</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ub/Re</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ia/Ta, first test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ia/Ta, second test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clean-up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file of units %1 cannot be read: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check its path and its permissions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file of units %1 is damaged, line %2: %3.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mend the file; nothing is taken from it until then.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it has more than %1 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is there twice</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no function &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be an object of readings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; has no reading &quot;%2&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; has to be an object with &quot;unit&quot; and &quot;decimals&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;unit&quot; has to be a text of 1 to %1 characters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;decimals&quot; has to be a whole number from 0 to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a reading has &quot;unit&quot; and &quot;decimals&quot;, and no &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it has to be an object of functions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>from %1 to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, or &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is one of %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is a whole number %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is a number %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is true or false.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no function &quot;%1&quot;; it is one of %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no options.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no such option; it has %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The test ub-re measures Re itself; leave this option out.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not together with with-ub-re, which measures Re.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It has to be given.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument did not take the date: it reports another.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set it again. If that does not help, have the instrument repaired.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument has not reported the date as set.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read the date, and set it again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another job is under way.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wait until it has finished, or abort it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument is in update mode (3) and waits for firmware.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send it its firmware, or restart it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The link to the instrument is not up.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open the line, check cable and power, and wait until the link is up.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check cable and power, and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The link to it was lost.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is not confirmed that the instrument has stopped: it may still be running, and high voltage may be on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cut the mains of the instrument, or switch it off, before anybody touches the appliance.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument did not prepare the measurement in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check how the appliance is connected, and measure again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument did not start the measurement in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the mains supply and how the appliance is connected, and measure again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The measurement ended early or without a reading, and no error was seen.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measure again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument gave the measurement up in the middle, for another function or for a restart.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument is busy with a function that was not started here, and does not stop it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switch the instrument off, and on again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The measurement was given up, and the instrument has stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The application did not say in time that it was still there, so the measurement was aborted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is not known whether the instrument has restarted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument has not come back from its restart in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check cable and power, or switch the instrument off and on again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check cable and power, and send the same firmware again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing was sent, and the instrument keeps its firmware.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No sector was sent. The instrument may be in update mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not all of the firmware was confirmed. The instrument stays in update mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument did not change to update mode in time. Nothing was sent.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All sectors and the confirmation were accepted, but the instrument stays in update mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send the same firmware again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The firmware was sent and confirmed, but the instrument has not come back in time.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check cable and power. Once the link is up, its version tells what became of it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The link was lost before the first sector was sent.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The program vesmar-guard, which stops the instrument if this program ends in the middle of a measurement, cannot be started: %1. Nothing was sent.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install it with the library, as libexec/vesmar/vesmar-guard.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument knows dates from 2001-01-01T00:00:00 to 2099-12-31T23:59:59 only.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a date that exists, in these years.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>These settings cannot be measured.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Correct the settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check that it is the right file, and complete.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The image is empty, or its size is not a multiple of 512 bytes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The confirmation has fewer than 2 bytes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is no serial line.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let this name lead to the serial line that the instrument is wired to.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The serial device %1 does not exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check that the board&apos;s serial line has this name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No permission to open the serial device %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Join the group that owns it (usually: sudo usermod -a -G dialout &quot;$USER&quot;) and log in again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The serial device %1 cannot be opened: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the line and its driver, and whether another program holds the device.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The serial device %1 is held by %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A measurement may be running. End that program, or wait until it has ended.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a program that cannot be seen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This application has the instrument open already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create one instrument, and use it alone.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The trace file %1 cannot be written: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check its folder, its permissions and the free space.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument has found something wrong with itself, its supply or the connected appliance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look the number up in the instrument&apos;s own manual; restart the instrument (vesmar restart) and see whether it comes back.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing is to be done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument is switched off or still starting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the cable is unplugged or broken</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the serial device is another instrument&apos;s, or none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switch the instrument on and check its cable; the link comes back by itself. A device that was missing when the link was enabled needs a disable and an enable.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument is in a condition in which it takes no requests</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>another program uses the same line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the firmware and this library do not suit each other</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End other programs that use the line, switch the instrument off and on, and compare its version (vesmar info) with the one that this library was made for.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the cable or a plug is damaged, or runs beside a source of interference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument&apos;s line settings are not 115200 baud, 8 bits, even parity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Change the cable, end other programs that use the line, and switch the instrument off and on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a request has just failed, or the instrument is restarting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wait: within about half a minute the link is back, or one of 100 to 102 says what is wrong. A measurement that was running has to be started anew.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the settings do not suit the instrument or what is connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument found a fault while it prepared, such as a missing protective conductor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the settings and the connection of the appliance, then prepare again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument fell back while it started, such as for a missing mains voltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument refused the start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the mains supply and the connection of the appliance, then prepare and start again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the measurement was ended at the instrument</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument found a fault while it measured</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the connection of the appliance and measure again; do not take the readings so far for a result.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument refused the change of mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the answer was lost on the line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The firmware is unchanged. End any measurement, switch the instrument off and on, and update again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the file is not a firmware image, or not a whole one: its size is no multiple of 512 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take the image file as it was delivered. The instrument waits in update mode: update it with the right file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the confirmation file is not the one that belongs to the image: it is shorter than 2 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take both files as they were delivered. The instrument waits in update mode: update it with the right files.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument refused the update or one of its sectors</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a sector or its acknowledge was lost on the line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument waits in update mode and has no complete firmware: do not switch it off, check the cable, and update it again from the beginning.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the confirmation file belongs to another image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the image arrived damaged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument waits in update mode: update it again with the image and the confirmation that belong together.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>somebody has changed the function at the instrument while the test was prepared</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave the instrument alone during the test and prepare it again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the start test has not been passed: no mains voltage, or L and N swapped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument did not answer in time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the mains supply and the start test that the instrument shows, then start the test again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument took too long to prepare</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the connection of the RCD and start the test again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the RCD is not connected, is switched off or is of another kind</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument did not answer the check</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check that the RCD is connected and switched on, and start the test again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the RCD is not connected, is switched off or does not suit the settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the mains voltage at the RCD is not what the test needs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the connection of the RCD and the settings (current, type, phase); look the check code up in the instrument&apos;s own manual, then start the test again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>L and N are swapped, or the mains voltage is out of the range of the IEC test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Turn the mains plug or set the swap of L and N, and check the mains voltage; the test goes on by itself once it suits, or abort it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument reports its error 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a Ub/Re test was started and the instrument stayed silent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Check the connection of the RCD and start the test again; if it stays so, restart the instrument.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the test was aborted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument ended the test by itself</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument reports its error 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>If nobody aborted the test, check the connection of the RCD and start it again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument has found something wrong with the RCD, the mains or itself</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look the number, less 520, up in the instrument&apos;s own manual, and start the test again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument reports its error 5; an IEC test that runs begins anew by itself</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let an IEC test go on; otherwise look error 5 up in the instrument&apos;s own manual, and start the test again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the link is lost: the instrument does not answer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the link is lost: the instrument keeps refusing requests</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the link is lost: answers keep arriving damaged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the link is being re-established</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument could not prepare the measurement</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument could not start the measurement</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the measurement ended without a result</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument could not be switched to update mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the firmware image cannot be used</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the firmware&apos;s confirmation data is too short</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument refused the update, or a part of the image was not transferred</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument refused the closing confirmation of the update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument reports a function other than the RCD test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the RCD test stayed idle for too long</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the RCD test stayed prepared for too long</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the check of the RCD failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 7</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 8</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the check of the RCD failed with the instrument&apos;s code 9</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the mains voltage does not suit the IEC RCD test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the RCD test stayed silent, or the instrument reports its error 0 in it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the RCD test ended without a result, or the instrument reports its error 1 in it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument reports its error %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument reports its error %1 in an RCD test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>resistance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>voltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>energy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>power</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>power factor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>apparent power</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>maximum voltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ULN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>primary voltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PWM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ISUB voltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ISUB current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>result</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>delay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UNPE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>frequency</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ia</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ta</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Words</name>
    <message>
        <source>Not connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connecting …</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connection lost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waits for firmware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Normal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calibration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mode 2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ending what still runs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preparing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Checking the object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for the mains</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Starting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measuring</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stopping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cleaning up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Confirming the stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Writing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restarting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Changing to update mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Beginning the update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sending the firmware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finished</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Under way</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Completed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Aborted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Completed with gaps</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
