<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Report</name>
    <message>
        <source>, </source>
        <translation>, </translation>
    </message>
    <message>
        <source>name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>package</source>
        <translation>Paket</translation>
    </message>
    <message>
        <source>version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>minimum SDK</source>
        <translation>mindestens</translation>
    </message>
    <message>
        <source>target SDK</source>
        <translation>entwickelt für</translation>
    </message>
    <message>
        <source>size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>unpacked</source>
        <translation>entpackt</translation>
    </message>
    <message>
        <source>code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>libraries</source>
        <translation>Bibliotheken</translation>
    </message>
    <message>
        <source>resources</source>
        <translation>Ressourcen</translation>
    </message>
    <message>
        <source>other files</source>
        <translation>andere Dateien</translation>
    </message>
    <message>
        <source>asks for</source>
        <translation>fragt nach</translation>
    </message>
    <message>
        <source>no group</source>
        <translation>ohne Gruppe</translation>
    </message>
    <message>
        <source>in settings</source>
        <translation>in Einstellungen</translation>
    </message>
    <message>
        <source>gets</source>
        <translation>erhält</translation>
    </message>
    <message>
        <source>requests</source>
        <translation>fordert an</translation>
    </message>
    <message>
        <source>%1 more, which --all shows</source>
        <translation>%1 weitere, die --all zeigt</translation>
    </message>
    <message>
        <source>optional</source>
        <translation>optional</translation>
    </message>
    <message>
        <source>implied: %1</source>
        <translation>abgeleitet: %1</translation>
    </message>
    <message>
        <source>needs</source>
        <translation>benötigt</translation>
    </message>
    <message>
        <source>can use</source>
        <translation>kann nutzen</translation>
    </message>
    <message>
        <source>implies</source>
        <translation>setzt voraus</translation>
    </message>
    <message>
        <source>processors</source>
        <translation>Prozessoren</translation>
    </message>
    <message>
        <source>languages</source>
        <translation>Sprachen</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message>
        <source>splits</source>
        <translation>Teilpakete</translation>
    </message>
    <message>
        <source>launcher</source>
        <translation>Starter</translation>
    </message>
    <message>
        <source>label</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>icons</source>
        <translation>Symbole</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
</context>
<context>
    <name>AndroidVersion</name>
    <message>
        <source>a preview of Android</source>
        <translation>eine Vorschau von Android</translation>
    </message>
    <message>
        <source>%1 and later</source>
        <translation>%1 und neuer</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
</context>
<context>
    <name>Feature</name>
    <message>
        <source>sound with low latency</source>
        <translation>Ton mit geringer Verzögerung</translation>
    </message>
    <message>
        <source>sound output</source>
        <translation>Tonausgabe</translation>
    </message>
    <message>
        <source>professional sound</source>
        <translation>professioneller Ton</translation>
    </message>
    <message>
        <source>camera on the back</source>
        <translation>Kamera auf der Rückseite</translation>
    </message>
    <message>
        <source>any camera</source>
        <translation>irgendeine Kamera</translation>
    </message>
    <message>
        <source>camera with autofocus</source>
        <translation>Kamera mit Autofokus</translation>
    </message>
    <message>
        <source>external camera</source>
        <translation>externe Kamera</translation>
    </message>
    <message>
        <source>camera with a flash</source>
        <translation>Kamera mit Blitz</translation>
    </message>
    <message>
        <source>camera on the front</source>
        <translation>Kamera auf der Vorderseite</translation>
    </message>
    <message>
        <source>infrared transmitter</source>
        <translation>Infrarotsender</translation>
    </message>
    <message>
        <source>wired network</source>
        <translation>kabelgebundenes Netzwerk</translation>
    </message>
    <message>
        <source>pointer or touch screen</source>
        <translation>Zeigegerät oder Touchscreen</translation>
    </message>
    <message>
        <source>fingerprint reader</source>
        <translation>Fingerabdruckleser</translation>
    </message>
    <message>
        <source>game controller</source>
        <translation>Gamecontroller</translation>
    </message>
    <message>
        <source>location</source>
        <translation>Standort</translation>
    </message>
    <message>
        <source>satellite positioning</source>
        <translation>Satellitenortung</translation>
    </message>
    <message>
        <source>location by networks</source>
        <translation>Ortung über Netzwerke</translation>
    </message>
    <message>
        <source>microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>screen in landscape</source>
        <translation>Bildschirm im Querformat</translation>
    </message>
    <message>
        <source>screen in portrait</source>
        <translation>Bildschirm im Hochformat</translation>
    </message>
    <message>
        <source>accelerometer</source>
        <translation>Beschleunigungssensor</translation>
    </message>
    <message>
        <source>barometer</source>
        <translation>Barometer</translation>
    </message>
    <message>
        <source>compass</source>
        <translation>Kompass</translation>
    </message>
    <message>
        <source>gyroscope</source>
        <translation>Gyroskop</translation>
    </message>
    <message>
        <source>light sensor</source>
        <translation>Lichtsensor</translation>
    </message>
    <message>
        <source>proximity sensor</source>
        <translation>Näherungssensor</translation>
    </message>
    <message>
        <source>step counter</source>
        <translation>Schrittzähler</translation>
    </message>
    <message>
        <source>telephone</source>
        <translation>Telefon</translation>
    </message>
    <message>
        <source>touch screen</source>
        <translation>Touchscreen</translation>
    </message>
    <message>
        <source>car</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>television</source>
        <translation>Fernseher</translation>
    </message>
    <message>
        <source>watch</source>
        <translation>Uhr</translation>
    </message>
    <message>
        <source>television interface</source>
        <translation>Fernsehoberfläche</translation>
    </message>
    <message>
        <source>Wi-Fi</source>
        <translation>WLAN</translation>
    </message>
    <message>
        <source>widgets</source>
        <translation>Widgets</translation>
    </message>
    <message>
        <source>live wallpapers</source>
        <translation>Live-Hintergründe</translation>
    </message>
    <message>
        <source>input methods</source>
        <translation>Eingabemethoden</translation>
    </message>
    <message>
        <source>printing</source>
        <translation>Drucken</translation>
    </message>
</context>
</TS>
