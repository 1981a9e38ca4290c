<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Ask</name>
    <message>
        <source>Yes</source>
        <translation>Ja</translation>
    </message>
    <message>
        <source>No</source>
        <translation>Nein</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Korvane Feedback Agent</source>
        <translation>Korvane Feedback Agent</translation>
    </message>
    <message>
        <source>Welcome to the Korvane Feedback Agent</source>
        <translation>Willkommen beim Korvane Feedback Agent</translation>
    </message>
    <message>
        <source>Please Choose the Type of Feedback You Wish to Provide</source>
        <translation>Bitte wählen Sie die Art Ihrer Rückmeldung</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot;color: rgb(255, 255, 255); font-family:&apos;MS Sans Serif&apos;; font-style:normal;&quot;&gt;&lt;font size=&quot;+3&quot;&gt;Bug Report&lt;/font&gt;&lt;/span&gt;&lt;/p&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot; color: rgb(255, 255, 255); font-family:&apos;MS Sans Serif&apos;; font-style:normal;&quot;&gt;(Crashes / Issues)&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot;color: rgb(255, 255, 255); font-family:&apos;MS Sans Serif&apos;; font-style:normal;&quot;&gt;&lt;font size=&quot;+3&quot;&gt;Fehlerbericht&lt;/font&gt;&lt;/span&gt;&lt;/p&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot; color: rgb(255, 255, 255); font-family:&apos;MS Sans Serif&apos;; font-style:normal;&quot;&gt;(Abstürze / Probleme)&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot;color: rgb(255, 255, 255); font-family:&apos;MS Sans Serif&apos;; font-style:normal;&quot;&gt;&lt;font size=&quot;+3&quot;&gt;Feature Request&lt;/font&gt;&lt;/span&gt;&lt;/p&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot; color: rgb(255, 255, 255); font-family:&apos;MS Sans Serif&apos;; font-style:normal;&quot;&gt;(Features / Workflow)&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot;color: rgb(255, 255, 255); font-family:&apos;MS Sans Serif&apos;; font-style:normal;&quot;&gt;&lt;font size=&quot;+3&quot;&gt;Funktionswunsch&lt;/font&gt;&lt;/span&gt;&lt;/p&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot; color: rgb(255, 255, 255); font-family:&apos;MS Sans Serif&apos;; font-style:normal;&quot;&gt;(Funktionen / Workflow)&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Introduction</source>
        <translation>Einführung</translation>
    </message>
    <message>
        <source>Please take a moment to review how to collect and submit a good bug report.</source>
        <translation>Bitte nehmen Sie sich einen Moment Zeit und lesen Sie, wie Sie einen guten Fehlerbericht zusammenstellen und senden.</translation>
    </message>
    <message>
        <source>The following tips help make a good report that will aid developers in recreating your issue:</source>
        <translation>Die folgenden Tipps helfen Ihnen, einen guten Bericht zu verfassen, mit dem die Entwickler Ihr Problem nachstellen können:</translation>
    </message>
    <message>
        <source>1) Ensure only the content needed to recreate the issue is attached</source>
        <translation>1) Hängen Sie nur die Inhalte an, die zum Nachstellen des Problems nötig sind</translation>
    </message>
    <message>
        <source>2) Lower any settings in Scenes that are not critical to showing the issue</source>
        <translation>2) Verringern Sie in Szenen alle Einstellungen, die nicht nötig sind, um das Problem zu zeigen</translation>
    </message>
    <message>
        <source>3) Provide detailed steps the developer can folow in order to recreate the issue</source>
        <translation>3) Beschreiben Sie genau die Schritte, mit denen die Entwickler das Problem nachstellen können</translation>
    </message>
    <message>
        <source>For further advice and tips, please click the link to the video.</source>
        <translation>Weitere Hinweise und Tipps finden Sie im Video. Klicken Sie dazu bitte auf den Link.</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;a href=&quot;https://videos.korvane3d.com/watch/feedback-agent-tips&quot;&gt;&lt;img src=&quot;:/images/FB_video_logo.jpg&quot;/&gt;&lt;/a&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;a href=&quot;https://videos.korvane3d.com/watch/feedback-agent-tips&quot;&gt;&lt;img src=&quot;:/images/FB_video_logo.jpg&quot;/&gt;&lt;/a&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Step 1: Identity</source>
        <translation>Schritt 1: Identität</translation>
    </message>
    <message>
        <source>Your name:</source>
        <translation>Ihr Name:</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Please enter your name here&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Bitte geben Sie hier Ihren Namen ein&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Email address:</source>
        <translation>E-Mail-Adresse:</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Please enter your contact information in case Customer Service needs more information.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Bitte geben Sie Ihre Kontaktdaten an, falls der Kundendienst weitere Informationen benötigt.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Remember My Information</source>
        <translation>Meine Angaben merken</translation>
    </message>
    <message>
        <source>Step 2: Details</source>
        <translation>Schritt 2: Details</translation>
    </message>
    <message>
        <source>Area:</source>
        <translation>Bereich:</translation>
    </message>
    <message>
        <source>Build:</source>
        <translation>Build:</translation>
    </message>
    <message>
        <source>Include My System Information</source>
        <translation>Meine Systeminformationen mitsenden</translation>
    </message>
    <message>
        <source>Step 3: Description</source>
        <translation>Schritt 3: Beschreibung</translation>
    </message>
    <message>
        <source>Please provide a short title of the bug/issue  (70 characters max):</source>
        <translation>Bitte geben Sie einen kurzen Titel für den Fehler bzw. das Problem an (max. 70 Zeichen):</translation>
    </message>
    <message>
        <source>Please provide a description of the bug/issue:</source>
        <translation>Bitte beschreiben Sie den Fehler bzw. das Problem:</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Please enter a detailed description of the issue here.  If this issue deals with Scripting, code snippets may be included here, but full script files should be attached to the report.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Bitte beschreiben Sie das Problem hier ausführlich. Betrifft das Problem das Scripting, können Sie hier Codeausschnitte einfügen; vollständige Skriptdateien hängen Sie bitte an den Bericht an.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Step 4: Attachments</source>
        <translation>Schritt 4: Anhänge</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Select a file to attach to the report.  The file may be text or binary.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Datei auswählen, die an den Bericht angehängt wird. Es kann eine Text- oder Binärdatei sein.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Attach File(s)...</source>
        <translation>Datei(en) anhängen...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Remove the selected entry from the attachments.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Ausgewählten Eintrag aus den Anhängen entfernen.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Remove Selected</source>
        <translation>Auswahl entfernen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Clear all attachments from the report.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Alle Anhänge aus dem Bericht entfernen.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Clear All</source>
        <translation>Alle entfernen</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>Privatize content (NDA)</source>
        <translation>Inhalt vertraulich (NDA)</translation>
    </message>
    <message>
        <source>Enhanced capture</source>
        <translation>Erweiterte Aufnahme</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;This option will allow you to take a screen shot of a selected window to attach to the report.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Mit dieser Option nehmen Sie ein Bildschirmfoto eines ausgewählten Fensters auf und hängen es an den Bericht an.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Take Screen Shot...</source>
        <translation>Bildschirmfoto...</translation>
    </message>
    <message>
        <source>Delay:</source>
        <translation>Verzögerung:</translation>
    </message>
    <message>
        <source>2</source>
        <translation>2</translation>
    </message>
    <message>
        <source>seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>Feedback Agent Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot; font-size:12pt; font-weight:600; color:#aa0000;&quot;&gt;Note&lt;/span&gt;&lt;span style=&quot; font-size:12pt;&quot;&gt;: You should &lt;/span&gt;&lt;span style=&quot; font-size:12pt; font-weight:600; font-style:italic;&quot;&gt;only&lt;/span&gt;&lt;span style=&quot; font-size:12pt;&quot;&gt; modify these settings if you have a special need.&lt;/span&gt;&lt;/p&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot; font-size:12pt;&quot;&gt;The defaults should be used for most situations.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot; font-size:12pt; font-weight:600; color:#aa0000;&quot;&gt;Hinweis&lt;/span&gt;&lt;span style=&quot; font-size:12pt;&quot;&gt;: Sie sollten diese Einstellungen &lt;/span&gt;&lt;span style=&quot; font-size:12pt; font-weight:600; font-style:italic;&quot;&gt;nur&lt;/span&gt;&lt;span style=&quot; font-size:12pt;&quot;&gt; bei besonderem Bedarf ändern.&lt;/span&gt;&lt;/p&gt;&lt;p align=&quot;center&quot;&gt;&lt;span style=&quot; font-size:12pt;&quot;&gt;In den meisten Fällen sollten die Standardwerte verwendet werden.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>I understand.  Let me modify the settings.</source>
        <translation>Ich habe verstanden. Ich möchte die Einstellungen ändern.</translation>
    </message>
    <message>
        <source>HTTP destination:</source>
        <translation>HTTP-Ziel:</translation>
    </message>
    <message>
        <source>http://feedback.korvane3d.com/</source>
        <translation>http://feedback.korvane3d.com/</translation>
    </message>
    <message>
        <source>HTTP Proxy Settings</source>
        <translation>HTTP-Proxy-Einstellungen</translation>
    </message>
    <message>
        <source>Server:</source>
        <translation>Server:</translation>
    </message>
    <message>
        <source>Port:</source>
        <translation>Port:</translation>
    </message>
    <message>
        <source>8080</source>
        <translation>8080</translation>
    </message>
    <message>
        <source>User name:</source>
        <translation>Benutzername:</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Passwort:</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Cancel sending of this report.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Senden dieses Berichts abbrechen.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Start Over</source>
        <translation>Neu beginnen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Submit the report.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Bericht senden.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Send...</source>
        <translation>Senden...</translation>
    </message>
    <message>
        <source>(validating email...standby...)</source>
        <translation>(E-Mail wird geprüft... bitte warten...)</translation>
    </message>
    <message>
        <source>Your email address is incorrectly formatted.</source>
        <translation>Ihre E-Mail-Adresse ist falsch formatiert.</translation>
    </message>
    <message>
        <source>Your email address could not be validated.  Please verify that the domain was entered correctly.</source>
        <translation>Ihre E-Mail-Adresse konnte nicht geprüft werden. Bitte kontrollieren Sie, ob die Domain richtig eingegeben wurde.</translation>
    </message>
    <message>
        <source>Select a feedback type to submit a report</source>
        <translation>Wählen Sie eine Art der Rückmeldung, um einen Bericht zu senden</translation>
    </message>
    <message>
        <source>Please complete the &lt;b&gt;Identity&lt;/b&gt; tab.</source>
        <translation>Bitte füllen Sie die Registerkarte &lt;b&gt;Identität&lt;/b&gt; aus.</translation>
    </message>
    <message>
        <source>Please complete the &lt;b&gt;Details&lt;/b&gt; tab.</source>
        <translation>Bitte füllen Sie die Registerkarte &lt;b&gt;Details&lt;/b&gt; aus.</translation>
    </message>
    <message>
        <source>Please complete the &lt;b&gt;Description&lt;/b&gt; tab.</source>
        <translation>Bitte füllen Sie die Registerkarte &lt;b&gt;Beschreibung&lt;/b&gt; aus.</translation>
    </message>
    <message>
        <source>Please add &lt;b&gt;Attachments&lt;/b&gt; to submit the report.</source>
        <translation>Bitte fügen Sie &lt;b&gt;Anhänge&lt;/b&gt; hinzu, um den Bericht zu senden.</translation>
    </message>
    <message>
        <source>Completed %1/%2</source>
        <translation>Erledigt %1/%2</translation>
    </message>
    <message>
        <source>Submit the report</source>
        <translation>Bericht senden</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Submitting the report...</source>
        <translation>Bericht wird gesendet...</translation>
    </message>
    <message>
        <source>3) Provide detailed steps the developer can follow in order to recreate the issue</source>
        <translation>3) Beschreiben Sie genau die Schritte, mit denen die Entwickler das Problem nachstellen können</translation>
    </message>
    <message>
        <source>Please provide a short title for the bug/issue (70 characters max):</source>
        <translation>Bitte geben Sie einen kurzen Titel für den Fehler bzw. das Problem an (max. 70 Zeichen):</translation>
    </message>
    <message>
        <source>Please take a moment to review how to collect and submit a good feature/flow request.</source>
        <translation>Bitte nehmen Sie sich einen Moment Zeit und lesen Sie, wie Sie einen guten Funktions- oder Workflow-Wunsch zusammenstellen und senden.</translation>
    </message>
    <message>
        <source>The following tips help make a good report that will aid developers in recreating your request:</source>
        <translation>Die folgenden Tipps helfen Ihnen, einen guten Bericht zu verfassen, mit dem die Entwickler Ihren Wunsch nachvollziehen können:</translation>
    </message>
    <message>
        <source>1) Explain what it is you are trying to do that is causing difficulty</source>
        <translation>1) Erklären Sie, was Sie erreichen möchten und wobei Ihnen das Schwierigkeiten bereitet</translation>
    </message>
    <message>
        <source>2) Are there more general workflows that could make your request better for all?</source>
        <translation>2) Gibt es allgemeinere Workflows, die Ihren Wunsch für alle Anwender nützlicher machen würden?</translation>
    </message>
    <message>
        <source>3) Are there examples of good workflows that you may have seen elsewhere?</source>
        <translation>3) Kennen Sie Beispiele für gute Workflows, die Sie anderswo gesehen haben?</translation>
    </message>
    <message>
        <source>Please provide a short title for the feature request (70 characters max):</source>
        <translation>Bitte geben Sie einen kurzen Titel für den Funktionswunsch an (max. 70 Zeichen):</translation>
    </message>
    <message>
        <source>Please provide a description of the feature request:</source>
        <translation>Bitte beschreiben Sie den Funktionswunsch:</translation>
    </message>
    <message>
        <source>Korvane 3D%1 Feedback Agent%2  Build %3 (%4%5) %6</source>
        <translation>Korvane 3D%1 Feedback Agent%2  Build %3 (%4%5) %6</translation>
    </message>
    <message>
        <source>Another instance of Feedback Agent seems to be running.</source>
        <translation>Feedback Agent scheint bereits zu laufen.</translation>
    </message>
    <message>
        <source>Select File...</source>
        <translation>Datei auswählen...</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
    <message>
        <source>File Access Failure</source>
        <translation>Dateizugriffsfehler</translation>
    </message>
    <message>
        <source>Failed to access file.</source>
        <translation>Auf die Datei konnte nicht zugegriffen werden.</translation>
    </message>
    <message>
        <source>Screen Shot Failure</source>
        <translation>Bildschirmfoto fehlgeschlagen</translation>
    </message>
    <message>
        <source>No picture of the screen could be taken: the desktop&apos;s screen-shot service did not answer or did not allow it.</source>
        <translation>Es konnte kein Bild des Bildschirms aufgenommen werden: Der Bildschirmfoto-Dienst der Arbeitsumgebung hat nicht geantwortet oder es nicht erlaubt.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Name Image</source>
        <translation>Bild benennen</translation>
    </message>
    <message>
        <source>Name Screen Shot</source>
        <translation>Bildschirmfoto benennen</translation>
    </message>
    <message>
        <source>Report Submitted</source>
        <translation>Bericht gesendet</translation>
    </message>
    <message>
        <source>Your report has been successfully submitted!</source>
        <translation>Ihr Bericht wurde erfolgreich gesendet!</translation>
    </message>
    <message>
        <source>Submission Failed</source>
        <translation>Senden fehlgeschlagen</translation>
    </message>
    <message>
        <source>Your report could not be submitted at this time:
&quot;%1&quot;</source>
        <translation>Ihr Bericht konnte derzeit nicht gesendet werden:
&quot;%1&quot;</translation>
    </message>
    <message>
        <source>DirectX version</source>
        <translation>DirectX-Version</translation>
    </message>
    <message>
        <source>Physical memory</source>
        <translation>Arbeitsspeicher</translation>
    </message>
    <message>
        <source>Processor</source>
        <translation>Prozessor</translation>
    </message>
    <message>
        <source>Operating system</source>
        <translation>Betriebssystem</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>System information is being gathered.</source>
        <translation>Systeminformationen werden gesammelt.</translation>
    </message>
    <message>
        <source>No system information is available.</source>
        <translation>Es sind keine Systeminformationen verfügbar.</translation>
    </message>
    <message>
        <source>Tips video</source>
        <translation>Video mit Tipps</translation>
    </message>
    <message>
        <source>Attachments</source>
        <translation>Anhänge</translation>
    </message>
    <message>
        <source>Upload progress</source>
        <translation>Fortschritt der Übertragung</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Animation</source>
        <translation>Animation</translation>
    </message>
    <message>
        <source>Asset Browser</source>
        <translation>Asset-Browser</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>Cloth Simulation</source>
        <translation>Stoffsimulation</translation>
    </message>
    <message>
        <source>Content Library</source>
        <translation>Inhaltsbibliothek</translation>
    </message>
    <message>
        <source>Crashes / Hangs</source>
        <translation>Abstürze / Hänger</translation>
    </message>
    <message>
        <source>Documentation</source>
        <translation>Dokumentation</translation>
    </message>
    <message>
        <source>Dynamics</source>
        <translation>Dynamik</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Fur and Hair</source>
        <translation>Fell und Haare</translation>
    </message>
    <message>
        <source>Geometry Editing</source>
        <translation>Geometriebearbeitung</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Installation</source>
        <translation>Installation</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>Benutzeroberfläche</translation>
    </message>
    <message>
        <source>Keyframes</source>
        <translation>Keyframes</translation>
    </message>
    <message>
        <source>Licensing</source>
        <translation>Lizenzierung</translation>
    </message>
    <message>
        <source>Lights</source>
        <translation>Lichtquellen</translation>
    </message>
    <message>
        <source>Materials</source>
        <translation>Materialien</translation>
    </message>
    <message>
        <source>Modeling</source>
        <translation>Modellierung</translation>
    </message>
    <message>
        <source>Morphs</source>
        <translation>Morphs</translation>
    </message>
    <message>
        <source>Motion Capture</source>
        <translation>Motion Capture</translation>
    </message>
    <message>
        <source>Network Rendering</source>
        <translation>Netzwerk-Rendering</translation>
    </message>
    <message>
        <source>Node Editor</source>
        <translation>Node-Editor</translation>
    </message>
    <message>
        <source>Particles</source>
        <translation>Partikel</translation>
    </message>
    <message>
        <source>Performance</source>
        <translation>Leistung</translation>
    </message>
    <message>
        <source>Physics</source>
        <translation>Physik</translation>
    </message>
    <message>
        <source>Plug-ins</source>
        <translation>Plug-ins</translation>
    </message>
    <message>
        <source>Posing</source>
        <translation>Posen</translation>
    </message>
    <message>
        <source>Python Scripting</source>
        <translation>Python-Scripting</translation>
    </message>
    <message>
        <source>Render Settings</source>
        <translation>Render-Einstellungen</translation>
    </message>
    <message>
        <source>Rendering</source>
        <translation>Rendering</translation>
    </message>
    <message>
        <source>Rigging</source>
        <translation>Rigging</translation>
    </message>
    <message>
        <source>Scene Management</source>
        <translation>Szenenverwaltung</translation>
    </message>
    <message>
        <source>Sculpting</source>
        <translation>Sculpting</translation>
    </message>
    <message>
        <source>Shaders</source>
        <translation>Shader</translation>
    </message>
    <message>
        <source>Skinning</source>
        <translation>Skinning</translation>
    </message>
    <message>
        <source>Terrain</source>
        <translation>Terrain</translation>
    </message>
    <message>
        <source>Textures</source>
        <translation>Texturen</translation>
    </message>
    <message>
        <source>Timeline</source>
        <translation>Zeitleiste</translation>
    </message>
    <message>
        <source>UV Mapping</source>
        <translation>UV-Mapping</translation>
    </message>
    <message>
        <source>Undo / Redo</source>
        <translation>Rückgängig / Wiederholen</translation>
    </message>
    <message>
        <source>Viewport</source>
        <translation>Viewport</translation>
    </message>
    <message>
        <source>Volumetrics</source>
        <translation>Volumetrische Effekte</translation>
    </message>
    <message>
        <source>Web Export</source>
        <translation>Web-Export</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Sonstiges</translation>
    </message>
</context>
<context>
    <name>ScreenShot</name>
    <message>
        <source>LMB: Start a new selection
RMB: Accept capture</source>
        <translation>Linke Maustaste: Neue Auswahl beginnen
Rechte Maustaste: Aufnahme übernehmen</translation>
    </message>
</context>
</TS>
