<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
  <context>
    <name>Application</name>
    <message>
      <source>Out of memory</source>
      <translation>Kein Speicher mehr</translation>
    </message>
    <message>
      <source>Something went wrong</source>
      <translation>Etwas ist schiefgegangen</translation>
    </message>
  </context>
  <context>
    <name>CanvasAccessible</name>
    <message>
      <source>%1 elements, %2 nets</source>
      <translation>%1 Elemente, %2 Netze</translation>
    </message>
    <message>
      <source>%1, %2</source>
      <translation>%1, %2</translation>
    </message>
    <message>
      <source>%1, net</source>
      <translation>%1, Netz</translation>
    </message>
    <message>
      <source>%1, terminal %2</source>
      <translation>%1, Anschluss %2</translation>
    </message>
    <message>
      <source>Drawing</source>
      <translation>Zeichnung</translation>
    </message>
    <message>
      <source>joins %1</source>
      <translation>verbindet %1</translation>
    </message>
    <message>
      <source>terminal %1 not connected</source>
      <translation>Anschluss %1 nicht verbunden</translation>
    </message>
    <message>
      <source>terminal %1 of %2</source>
      <translation>Anschluss %1 von %2</translation>
    </message>
    <message>
      <source>terminal %1 on net %2</source>
      <translation>Anschluss %1 am Netz %2</translation>
    </message>
    <message>
      <source>text %1</source>
      <translation>Text %1</translation>
    </message>
  </context>
  <context>
    <name>CircuitCheck</name>
    <message>
      <source>%1 closes a loop of voltage sources.</source>
      <translation>%1 schließt eine Masche aus Spannungsquellen.</translation>
    </message>
    <message>
      <source>%1 has the model %2, which is not known.</source>
      <translation>%1 hat das Modell %2, das unbekannt ist.</translation>
    </message>
    <message>
      <source>%1 is a %2, which can not be simulated.</source>
      <translation>%1 ist vom Typ %2, der nicht simuliert werden kann.</translation>
    </message>
    <message>
      <source>%1 is short-circuited by the net %2.</source>
      <translation>%1 wird vom Netz %2 kurzgeschlossen.</translation>
    </message>
    <message>
      <source>The circuit has no ground: connect a Ground to the net that all voltages are measured against.</source>
      <translation>Die Schaltung hat keine Masse: Schließen Sie Ground an das Netz an, gegen das alle Spannungen gemessen werden.</translation>
    </message>
    <message>
      <source>The net %1 floats: no direct current can flow from it to ground.</source>
      <translation>Das Netz %1 ist potentialfrei: Von ihm kann kein Gleichstrom zur Masse fließen.</translation>
    </message>
    <message>
      <source>The parameters %1 and %2 differ only in the case of letters, which the simulator does not see.</source>
      <translation>Die Parameter %1 und %2 unterscheiden sich nur in Groß- und Kleinbuchstaben, was der Simulator nicht sieht.</translation>
    </message>
    <message>
      <source>The terminal %1 of %2 is not connected.</source>
      <translation>Der Anschluss %1 von %2 ist nicht verbunden.</translation>
    </message>
    <message>
      <source>The value %1 of %2 can not be computed: %3.</source>
      <translation>Der Wert %1 von %2 kann nicht berechnet werden: %3.</translation>
    </message>
    <message>
      <source>Two nets are named %1: they count as one.</source>
      <translation>Zwei Netze heißen %1: Sie gelten als eines.</translation>
    </message>
  </context>
  <context>
    <name>ClipboardWidget</name>
    <message>
      <source>(no description)</source>
      <translation>(ohne Beschreibung)</translation>
    </message>
    <message>
      <source>Clear History</source>
      <translation>Verlauf leeren</translation>
    </message>
    <message>
      <source>Clipboard</source>
      <translation>Zwischenablage</translation>
    </message>
    <message>
      <source>Nothing has been copied yet.</source>
      <translation>Es wurde noch nichts kopiert.</translation>
    </message>
    <message>
      <source>Paste takes the chosen entry until the next copy.</source>
      <translation>Einfügen nimmt bis zur nächsten Kopie den gewählten Eintrag.</translation>
    </message>
    <message>
      <source>Paste takes the newest entry. Click another to take that one.</source>
      <translation>Einfügen nimmt den neuesten Eintrag. Klicken Sie auf einen anderen, um diesen zu nehmen.</translation>
    </message>
  </context>
  <context>
    <name>DrawingSearch</name>
    <message>
      <source>"%1"</source>
      <translation>„%1“</translation>
    </message>
    <message>
      <source>%1  %2</source>
      <translation>%1  %2</translation>
    </message>
    <message>
      <source>%1  net</source>
      <translation>%1  Netz</translation>
    </message>
    <message>
      <source>... and %1 more</source>
      <translation>... und %1 weitere</translation>
    </message>
    <message>
      <source>Find</source>
      <translation>Suchen</translation>
    </message>
    <message>
      <source>Name of an element or a net, or a text</source>
      <translation>Name eines Elements oder Netzes, oder ein Text</translation>
    </message>
  </context>
  <context>
    <name>ElementExplorer</name>
    <message>
      <source>
Key: %1</source>
      <translation>
Taste: %1</translation>
    </message>
    <message>
      <source>Elements</source>
      <translation>Elemente</translation>
    </message>
    <message>
      <source>Filter</source>
      <translation>Filter</translation>
    </message>
    <message>
      <source>Nothing fits "%1"</source>
      <translation>Nichts passt zu „%1“</translation>
    </message>
  </context>
  <context>
    <name>EmptyHint</name>
    <message>
      <source>Click an element at the left, or press A and type its name
W lays wires; F5 simulates
Help &gt; Examples opens finished circuits</source>
      <translation>Klicken Sie links auf ein Element, oder drücken Sie A und tippen Sie seinen Namen
W legt Leitungen; F5 simuliert
Hilfe &gt; Beispiele öffnet fertige Schaltungen</translation>
    </message>
  </context>
  <context>
    <name>HelpMenu</name>
    <message>
      <source>%1: cannot be read</source>
      <translation>%1: nicht lesbar</translation>
    </message>
    <message>
      <source>&lt;h3&gt;%1 %2&lt;/h3&gt;&lt;p&gt;Draws circuits, with everything that an editor plug-in needs around it.&lt;/p&gt;</source>
      <translation>&lt;h3&gt;%1 %2&lt;/h3&gt;&lt;p&gt;Zeichnet Schaltungen, mit allem, was ein Editor-Plug-in um sich braucht.&lt;/p&gt;</translation>
    </message>
    <message>
      <source>&lt;p&gt;&lt;b&gt;%1 %2&lt;/b&gt;&lt;br&gt;%3&lt;br&gt;%4&lt;/p&gt;</source>
      <translation>&lt;p&gt;&lt;b&gt;%1 %2&lt;/b&gt;&lt;br&gt;%3&lt;br&gt;%4&lt;/p&gt;</translation>
    </message>
    <message>
      <source>&lt;p&gt;Built on Qt %1.&lt;/p&gt;</source>
      <translation>&lt;p&gt;Beruht auf Qt %1.&lt;/p&gt;</translation>
    </message>
    <message>
      <source>About</source>
      <translation>Über</translation>
    </message>
    <message>
      <source>Keys</source>
      <translation>Tasten</translation>
    </message>
    <message>
      <source>User Guide</source>
      <translation>Handbuch</translation>
    </message>
  </context>
  <context>
    <name>Import</name>
    <message>
      <source>"%1" is a text in the drawing, and of no effect</source>
      <translation>„%1“ ist ein Text in der Zeichnung, ohne Wirkung</translation>
    </message>
    <message>
      <source>"%1" is left out</source>
      <translation>„%1“ fehlt</translation>
    </message>
    <message>
      <source>%1 "%2" fits no element type; it is a box</source>
      <translation>%1 „%2“ passt zu keinem Elementtyp; es ist ein Kasten</translation>
    </message>
    <message>
      <source>%1 drawn lines and shapes that belong to no symbol are left out</source>
      <translation>%1 gezeichnete Linien und Formen, die zu keinem Symbol gehören, fehlen</translation>
    </message>
    <message>
      <source>%1 is not known; it is a box with the terminals where wires end, and can not be simulated</source>
      <translation>%1 ist unbekannt; es ist ein Kasten mit Anschlüssen, wo Leitungen enden, und kann nicht simuliert werden</translation>
    </message>
    <message>
      <source>%1: %2 is left out: nothing tells where its terminals are</source>
      <translation>%1: %2 fehlt: Nichts sagt, wo seine Anschlüsse sind</translation>
    </message>
    <message>
      <source>%1: another element has this name; it is %2</source>
      <translation>%1: Ein anderes Element heißt so; es heißt %2</translation>
    </message>
    <message>
      <source>%1: is left out: its terminals are too many or too far apart</source>
      <translation>%1: fehlt: Es hat zu viele oder zu weit entfernte Anschlüsse</translation>
    </message>
    <message>
      <source>%1: one of its wires ends beside where the terminal should be, and was taken for it</source>
      <translation>%1: Eine Leitung endet neben dem Ort des Anschlusses und wurde dafür genommen</translation>
    </message>
    <message>
      <source>a symbol %1 without a name is %2</source>
      <translation>ein Symbol %1 ohne Namen heißt %2</translation>
    </message>
    <message>
      <source>has no value; it is that of a new element</source>
      <translation>hat keinen Wert; es ist der eines neuen Elements</translation>
    </message>
    <message>
      <source>is no LTspice schematic</source>
      <translation>ist kein LTspice-Schaltplan</translation>
    </message>
    <message>
      <source>its model %1 is not known; a text with the .model line in the drawing makes it so</source>
      <translation>sein Modell %1 ist unbekannt; ein Text mit der .model-Zeile in der Zeichnung macht es bekannt</translation>
    </message>
    <message>
      <source>line %1 is not understood: %2</source>
      <translation>Zeile %1 ist unverständlich: %2</translation>
    </message>
    <message>
      <source>the net %1 is named %2 as well; it keeps the first name</source>
      <translation>das Netz %1 heißt auch %2; es behält den ersten Namen</translation>
    </message>
    <message>
      <source>the sub-circuit %1 is a box; its inside is a drawing of its own, which is not taken over</source>
      <translation>die Teilschaltung %1 ist ein Kasten; ihr Inneres ist eine eigene Zeichnung und wird nicht übernommen</translation>
    </message>
    <message>
      <source>the wire at (%1, %2) joins nothing, and is left out</source>
      <translation>die Leitung bei (%1, %2) verbindet nichts und fehlt</translation>
    </message>
  </context>
  <context>
    <name>KeysPage</name>
    <message>
      <source>On the canvas</source>
      <translation>Auf der Zeichenfläche</translation>
    </message>
  </context>
  <context>
    <name>MainWindow</name>
    <message>
      <source>%1: is open in another window, too</source>
      <translation>%1: ist auch in einem anderen Fenster offen</translation>
    </message>
    <message>
      <source>%1[*] - Vortel Workbench</source>
      <translation>%1[*] - Vortel Workbench</translation>
    </message>
    <message>
      <source>Cannot open</source>
      <translation>Öffnen nicht möglich</translation>
    </message>
    <message>
      <source>Cannot recover</source>
      <translation>Wiederherstellen nicht möglich</translation>
    </message>
    <message>
      <source>Cannot save</source>
      <translation>Speichern nicht möglich</translation>
    </message>
    <message>
      <source>Import</source>
      <translation>Importieren</translation>
    </message>
    <message>
      <source>No Recent Files</source>
      <translation>Keine zuletzt geöffneten Dateien</translation>
    </message>
    <message>
      <source>Open project</source>
      <translation>Projekt öffnen</translation>
    </message>
    <message>
      <source>Save project</source>
      <translation>Projekt speichern</translation>
    </message>
    <message>
      <source>Select an element to see its help</source>
      <translation>Wählen Sie ein Element, um seine Hilfe zu sehen</translation>
    </message>
    <message>
      <source>Untitled</source>
      <translation>Unbenannt</translation>
    </message>
    <message>
      <source>cannot write %1: its name must end in .vprj or .ckt</source>
      <translation>kann %1 nicht schreiben: Der Name muss auf .vprj oder .ckt enden</translation>
    </message>
  </context>
  <context>
    <name>NetlistDialog</name>
    <message>
      <source>%1 with the terminals %2</source>
      <translation>%1 mit den Anschlüssen %2</translation>
    </message>
    <message>
      <source>&amp;Load File...</source>
      <translation>Datei &amp;laden...</translation>
    </message>
    <message>
      <source>Cannot open</source>
      <translation>Öffnen nicht möglich</translation>
    </message>
    <message>
      <source>Load netlist</source>
      <translation>Netzliste laden</translation>
    </message>
    <message>
      <source>Netlists (*.cir *.sub *.lib *.mod *.net *.sp *.txt);;All files (*)</source>
      <translation>Netzlisten (*.cir *.sub *.lib *.mod *.net *.sp *.txt);;Alle Dateien (*)</translation>
    </message>
    <message>
      <source>Text netlist</source>
      <translation>Netzliste als Text</translation>
    </message>
    <message>
      <source>The pins of the first .subckt become the terminals.</source>
      <translation>Die Anschlüsse des ersten .subckt werden die des Elements.</translation>
    </message>
    <message>
      <source>This is no netlist of a sub-circuit: %1.</source>
      <translation>Das ist keine Netzliste einer Teilschaltung: %1.</translation>
    </message>
  </context>
  <context>
    <name>NetlistTools</name>
    <message>
      <source>Select an element that is made of a netlist</source>
      <translation>Wählen Sie ein Element, das aus einer Netzliste besteht</translation>
    </message>
  </context>
  <context>
    <name>NetlistType</name>
    <message>
      <source>".subckt %1" has no pins, or too many</source>
      <translation>„.subckt %1“ hat keine oder zu viele Anschlüsse</translation>
    </message>
    <message>
      <source>%1 can not be a pin, or not once more</source>
      <translation>%1 kann kein Anschluss sein, oder nicht noch einmal</translation>
    </message>
    <message>
      <source>Current into %1</source>
      <translation>Strom in %1</translation>
    </message>
    <message>
      <source>Parameter of the netlist</source>
      <translation>Parameter der Netzliste</translation>
    </message>
    <message>
      <source>What the netlist of %1 describes.</source>
      <translation>Was die Netzliste von %1 beschreibt.</translation>
    </message>
    <message>
      <source>each ".subckt" needs an ".ends"</source>
      <translation>jedes „.subckt“ braucht ein „.ends“</translation>
    </message>
    <message>
      <source>it is too long</source>
      <translation>sie ist zu lang</translation>
    </message>
    <message>
      <source>there is no line ".subckt NAME PINS"</source>
      <translation>es gibt keine Zeile „.subckt NAME ANSCHLÜSSE“</translation>
    </message>
  </context>
  <context>
    <name>ParameterExpression</name>
    <message>
      <source>it is neither a number nor an expression in braces</source>
      <translation>es ist weder eine Zahl noch ein Ausdruck in Klammern</translation>
    </message>
    <message>
      <source>the expression can not be understood at character %1</source>
      <translation>der Ausdruck ist beim Zeichen %1 unverständlich</translation>
    </message>
    <message>
      <source>the expression is nested too deeply</source>
      <translation>der Ausdruck ist zu tief geschachtelt</translation>
    </message>
    <message>
      <source>the parameter "%1" is no number</source>
      <translation>der Parameter „%1“ ist keine Zahl</translation>
    </message>
    <message>
      <source>the parameter "%1" refers to itself</source>
      <translation>der Parameter „%1“ bezieht sich auf sich selbst</translation>
    </message>
    <message>
      <source>the parameters refer to one another too deeply</source>
      <translation>die Parameter beziehen sich zu tief aufeinander</translation>
    </message>
    <message>
      <source>the value is too large</source>
      <translation>der Wert ist zu groß</translation>
    </message>
    <message>
      <source>there is a division by zero</source>
      <translation>es wird durch null geteilt</translation>
    </message>
    <message>
      <source>there is no parameter "%1"</source>
      <translation>es gibt keinen Parameter „%1“</translation>
    </message>
  </context>
  <context>
    <name>PictureExport</name>
    <message>
      <source>%1 files (*.%2)</source>
      <translation>%1-Dateien (*.%2)</translation>
    </message>
    <message>
      <source>Cannot export</source>
      <translation>Export nicht möglich</translation>
    </message>
    <message>
      <source>Export as %1</source>
      <translation>Als %1 exportieren</translation>
    </message>
    <message>
      <source>Untitled</source>
      <translation>Unbenannt</translation>
    </message>
    <message>
      <source>Wrote %1</source>
      <translation>%1 geschrieben</translation>
    </message>
  </context>
  <context>
    <name>PlacingTools</name>
    <message>
      <source>Place which element?</source>
      <translation>Welches Element platzieren?</translation>
    </message>
  </context>
  <context>
    <name>Plot</name>
    <message>
      <source>Frequency</source>
      <translation>Frequenz</translation>
    </message>
    <message>
      <source>Swept current</source>
      <translation>Durchlaufener Strom</translation>
    </message>
    <message>
      <source>Swept voltage</source>
      <translation>Durchlaufene Spannung</translation>
    </message>
    <message>
      <source>Time</source>
      <translation>Zeit</translation>
    </message>
  </context>
  <context>
    <name>PlotPanel</name>
    <message>
      <source>A</source>
      <translation>A</translation>
    </message>
    <message>
      <source>A %1   B %2   B − A %3</source>
      <translation>A %1   B %2   B − A %3</translation>
    </message>
    <message>
      <source>A tick shows the curve, a double click its net in the drawing</source>
      <translation>Ein Haken zeigt die Kurve, ein Doppelklick ihr Netz in der Zeichnung</translation>
    </message>
    <message>
      <source>B</source>
      <translation>B</translation>
    </message>
    <message>
      <source>B − A</source>
      <translation>B − A</translation>
    </message>
    <message>
      <source>CSV...</source>
      <translation>CSV...</translation>
    </message>
    <message>
      <source>Cannot save</source>
      <translation>Speichern nicht möglich</translation>
    </message>
    <message>
      <source>Cursors</source>
      <translation>Zeiger</translation>
    </message>
    <message>
      <source>Curve</source>
      <translation>Kurve</translation>
    </message>
    <message>
      <source>Curves</source>
      <translation>Kurven</translation>
    </message>
    <message>
      <source>F5 runs the analysis that the panel Simulation sets up.</source>
      <translation>F5 startet die Analyse, die das Feld Simulation einstellt.</translation>
    </message>
    <message>
      <source>Fit</source>
      <translation>Einpassen</translation>
    </message>
    <message>
      <source>Log X</source>
      <translation>Log X</translation>
    </message>
    <message>
      <source>Log Y</source>
      <translation>Log Y</translation>
    </message>
    <message>
      <source>Logarithmic abscissa</source>
      <translation>Logarithmische Abszisse</translation>
    </message>
    <message>
      <source>Logarithmic ordinates, where any are</source>
      <translation>Logarithmische Ordinaten, wo es welche gibt</translation>
    </message>
    <message>
      <source>SVG...</source>
      <translation>SVG...</translation>
    </message>
    <message>
      <source>Save curves</source>
      <translation>Kurven speichern</translation>
    </message>
    <message>
      <source>Save the values of all curves</source>
      <translation>Die Werte aller Kurven speichern</translation>
    </message>
    <message>
      <source>Save what is seen as a picture</source>
      <translation>Das Gezeigte als Bild speichern</translation>
    </message>
    <message>
      <source>Show all curves whole (double click)</source>
      <translation>Alle Kurven ganz zeigen (Doppelklick)</translation>
    </message>
    <message>
      <source>Two lines to drag, and differences</source>
      <translation>Zwei Linien zum Ziehen, mit Differenzen</translation>
    </message>
    <message>
      <source>Value</source>
      <translation>Wert</translation>
    </message>
    <message>
      <source>cannot write %1: %2</source>
      <translation>kann %1 nicht schreiben: %2</translation>
    </message>
  </context>
  <context>
    <name>Printing</name>
    <message>
      <source>Cannot print</source>
      <translation>Drucken nicht möglich</translation>
    </message>
    <message>
      <source>the drawing is empty</source>
      <translation>die Zeichnung ist leer</translation>
    </message>
    <message>
      <source>the file %1 takes no page</source>
      <translation>die Datei %1 nimmt keine Seite an</translation>
    </message>
    <message>
      <source>the printer %1 takes no page</source>
      <translation>der Drucker %1 nimmt keine Seite an</translation>
    </message>
  </context>
  <context>
    <name>ProjectDiff</name>
    <message>
      <source>%1 added: %2</source>
      <translation>%1 hinzugefügt: %2</translation>
    </message>
    <message>
      <source>%1 added: %2%3</source>
      <translation>%1 hinzugefügt: %2%3</translation>
    </message>
    <message>
      <source>%1 removed</source>
      <translation>%1 entfernt</translation>
    </message>
    <message>
      <source>%1 removed: %2</source>
      <translation>%1 entfernt: %2</translation>
    </message>
    <message>
      <source>%1 renamed: %2</source>
      <translation>%1 umbenannt: %2</translation>
    </message>
    <message>
      <source>%1: moved by (%2, %3)</source>
      <translation>%1: verschoben um (%2, %3)</translation>
    </message>
    <message>
      <source>%1: turned or flipped</source>
      <translation>%1: gedreht oder gespiegelt</translation>
    </message>
    <message>
      <source>caption</source>
      <translation>Beschriftung</translation>
    </message>
    <message>
      <source>model</source>
      <translation>Modell</translation>
    </message>
    <message>
      <source>net %1 added: %2</source>
      <translation>Netz %1 hinzugefügt: %2</translation>
    </message>
    <message>
      <source>net %1 removed: %2</source>
      <translation>Netz %1 entfernt: %2</translation>
    </message>
    <message>
      <source>net %1 renamed: %2</source>
      <translation>Netz %1 umbenannt: %2</translation>
    </message>
    <message>
      <source>net %1: drawn in another way</source>
      <translation>Netz %1: anders gezeichnet</translation>
    </message>
    <message>
      <source>net %1: joined by %2</source>
      <translation>Netz %1: dazu kam %2</translation>
    </message>
    <message>
      <source>net %1: left by %2</source>
      <translation>Netz %1: gelöst wurde %2</translation>
    </message>
    <message>
      <source>nothing</source>
      <translation>nichts</translation>
    </message>
    <message>
      <source>output variable %1</source>
      <translation>Ausgangsgröße %1</translation>
    </message>
    <message>
      <source>parameter %1</source>
      <translation>Parameter %1</translation>
    </message>
    <message>
      <source>simulation, %1: %2</source>
      <translation>Simulation, %1: %2</translation>
    </message>
    <message>
      <source>text added: %1</source>
      <translation>Text hinzugefügt: %1</translation>
    </message>
    <message>
      <source>text looks different: %1</source>
      <translation>Text sieht anders aus: %1</translation>
    </message>
    <message>
      <source>text moved: %1</source>
      <translation>Text verschoben: %1</translation>
    </message>
    <message>
      <source>text removed: %1</source>
      <translation>Text entfernt: %1</translation>
    </message>
    <message>
      <source>text: %1 -&gt; %2</source>
      <translation>Text: %1 -&gt; %2</translation>
    </message>
    <message>
      <source>title: %1 -&gt; %2</source>
      <translation>Titel: %1 -&gt; %2</translation>
    </message>
    <message>
      <source>type</source>
      <translation>Typ</translation>
    </message>
  </context>
  <context>
    <name>PropertyEditor</name>
    <message>
      <source>%1 does not take "%2"</source>
      <translation>%1 nimmt „%2“ nicht an</translation>
    </message>
    <message>
      <source>Circuit</source>
      <translation>Schaltung</translation>
    </message>
    <message>
      <source>General</source>
      <translation>Allgemein</translation>
    </message>
    <message>
      <source>Global Parameters</source>
      <translation>Globale Parameter</translation>
    </message>
    <message>
      <source>Node %1</source>
      <translation>Netz %1</translation>
    </message>
    <message>
      <source>Nothing selected</source>
      <translation>Nichts ausgewählt</translation>
    </message>
    <message>
      <source>Other</source>
      <translation>Sonstiges</translation>
    </message>
    <message>
      <source>Parameters</source>
      <translation>Parameter</translation>
    </message>
    <message>
      <source>Properties</source>
      <translation>Eigenschaften</translation>
    </message>
    <message>
      <source>Property</source>
      <translation>Eigenschaft</translation>
    </message>
    <message>
      <source>Value</source>
      <translation>Wert</translation>
    </message>
    <message>
      <source>left to right</source>
      <translation>links nach rechts</translation>
    </message>
    <message>
      <source>none</source>
      <translation>keine</translation>
    </message>
    <message>
      <source>top to bottom</source>
      <translation>oben nach unten</translation>
    </message>
  </context>
  <context>
    <name>Questions</name>
    <message>
      <source>%1 has been changed by another program since it was opened or saved here. Replace what it holds now?</source>
      <translation>%1 wurde von einem anderen Programm geändert, seit es hier geöffnet oder gespeichert wurde. Den jetzigen Inhalt ersetzen?</translation>
    </message>
    <message>
      <source>%1 has changed. Save it?</source>
      <translation>%1 wurde geändert. Speichern?</translation>
    </message>
    <message>
      <source>%1 was imported. Look at these:</source>
      <translation>%1 wurde importiert. Sehen Sie sich dies an:</translation>
    </message>
    <message>
      <source>%1 was not closed. Its changes up to %2 can be recovered.</source>
      <translation>%1 wurde nicht geschlossen. Die Änderungen bis %2 können wiederhergestellt werden.</translation>
    </message>
    <message>
      <source>%1. Save the rest?</source>
      <translation>%1. Den Rest speichern?</translation>
    </message>
    <message>
      <source>&amp;Discard</source>
      <translation>&amp;Verwerfen</translation>
    </message>
    <message>
      <source>&amp;Recover</source>
      <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
      <source>&amp;Replace</source>
      <translation>E&amp;rsetzen</translation>
    </message>
    <message>
      <source>A project without a name</source>
      <translation>Ein Projekt ohne Namen</translation>
    </message>
    <message>
      <source>Changed elsewhere</source>
      <translation>Anderswo geändert</translation>
    </message>
    <message>
      <source>Imported</source>
      <translation>Importiert</translation>
    </message>
    <message>
      <source>Not all can be saved</source>
      <translation>Nicht alles kann gespeichert werden</translation>
    </message>
    <message>
      <source>Recover changes</source>
      <translation>Änderungen wiederherstellen</translation>
    </message>
    <message>
      <source>Unsaved changes</source>
      <translation>Ungespeicherte Änderungen</translation>
    </message>
    <message>
      <source>and %1 more, under the details.</source>
      <translation>und %1 weitere, unter den Details.</translation>
    </message>
  </context>
  <context>
    <name>SearchBox</name>
    <message>
      <source>Nothing fits "%1"</source>
      <translation>Nichts passt zu „%1“</translation>
    </message>
    <message>
      <source>What fits</source>
      <translation>Was passt</translation>
    </message>
  </context>
  <context>
    <name>Settings</name>
    <message>
      <source>your settings could not be saved in %1</source>
      <translation>Ihre Einstellungen konnten nicht in %1 gesichert werden</translation>
    </message>
  </context>
  <context>
    <name>Simulation</name>
    <message>
      <source>%1 is no net of the circuit.</source>
      <translation>%1 ist kein Netz der Schaltung.</translation>
    </message>
    <message>
      <source>%1 is no source of the circuit.</source>
      <translation>%1 ist keine Quelle der Schaltung.</translation>
    </message>
    <message>
      <source>%1: "%2" can not be %3.</source>
      <translation>%1: „%2“ kann nicht %3 sein.</translation>
    </message>
    <message>
      <source>%1: "%2" is empty.</source>
      <translation>%1: „%2“ ist leer.</translation>
    </message>
    <message>
      <source>%1: the frequencies must be positive and rise, with one point at least.</source>
      <translation>%1: Die Frequenzen müssen positiv sein und steigen, mit mindestens einem Punkt.</translation>
    </message>
    <message>
      <source>A number such as 4.7k, 10u or 1M is expected</source>
      <translation>Erwartet wird eine Zahl wie 4.7k, 10u oder 1M</translation>
    </message>
    <message>
      <source>AC</source>
      <translation>AC</translation>
    </message>
    <message>
      <source>Begin with</source>
      <translation>Beginnen mit</translation>
    </message>
    <message>
      <source>DC sweep</source>
      <translation>DC-Durchlauf</translation>
    </message>
    <message>
      <source>DC sweep: the step must lead from the first value to the last.</source>
      <translation>DC-Durchlauf: Der Schritt muss vom ersten zum letzten Wert führen.</translation>
    </message>
    <message>
      <source>From</source>
      <translation>Von</translation>
    </message>
    <message>
      <source>Input source</source>
      <translation>Eingangsquelle</translation>
    </message>
    <message>
      <source>Largest step</source>
      <translation>Größter Schritt</translation>
    </message>
    <message>
      <source>Noise</source>
      <translation>Rauschen</translation>
    </message>
    <message>
      <source>Operating point</source>
      <translation>Arbeitspunkt</translation>
    </message>
    <message>
      <source>Outer from</source>
      <translation>Außen von</translation>
    </message>
    <message>
      <source>Outer source</source>
      <translation>Äußere Quelle</translation>
    </message>
    <message>
      <source>Outer step</source>
      <translation>Äußerer Schritt</translation>
    </message>
    <message>
      <source>Outer to</source>
      <translation>Außen bis</translation>
    </message>
    <message>
      <source>Output net</source>
      <translation>Ausgangsnetz</translation>
    </message>
    <message>
      <source>Parameter</source>
      <translation>Parameter</translation>
    </message>
    <message>
      <source>Parameter sweep</source>
      <translation>Parameterdurchlauf</translation>
    </message>
    <message>
      <source>Parameter sweep: 1 to %1 runs; values of a logarithmic sweep are positive.</source>
      <translation>Parameterdurchlauf: 1 bis %1 Läufe; die Werte eines logarithmischen sind positiv.</translation>
    </message>
    <message>
      <source>Points</source>
      <translation>Punkte</translation>
    </message>
    <message>
      <source>Record from</source>
      <translation>Aufzeichnen ab</translation>
    </message>
    <message>
      <source>Runs</source>
      <translation>Läufe</translation>
    </message>
    <message>
      <source>Source</source>
      <translation>Quelle</translation>
    </message>
    <message>
      <source>Spacing</source>
      <translation>Teilung</translation>
    </message>
    <message>
      <source>Step</source>
      <translation>Schritt</translation>
    </message>
    <message>
      <source>Stop</source>
      <translation>Ende</translation>
    </message>
    <message>
      <source>The run does not tell of %1 of %2.</source>
      <translation>Der Lauf sagt nichts über %1 von %2.</translation>
    </message>
    <message>
      <source>The run does not tell of the net %1.</source>
      <translation>Der Lauf sagt nichts über das Netz %1.</translation>
    </message>
    <message>
      <source>The run does not tell of the terminal %1 of %2.</source>
      <translation>Der Lauf sagt nichts über den Anschluss %1 von %2.</translation>
    </message>
    <message>
      <source>The simulator answered no values.</source>
      <translation>Der Simulator hat keine Werte geliefert.</translation>
    </message>
    <message>
      <source>There is no analysis "%1".</source>
      <translation>Es gibt keine Analyse „%1“.</translation>
    </message>
    <message>
      <source>To</source>
      <translation>Bis</translation>
    </message>
    <message>
      <source>Transient</source>
      <translation>Transient</translation>
    </message>
    <message>
      <source>Transient: the times must be positive, and the start before the stop.</source>
      <translation>Transient: Die Zeiten müssen positiv sein, der Anfang vor dem Ende.</translation>
    </message>
    <message>
      <source>none</source>
      <translation>keine</translation>
    </message>
  </context>
  <context>
    <name>SimulationPanel</name>
    <message>
      <source>Cancel</source>
      <translation>Abbrechen</translation>
    </message>
    <message>
      <source>Cannot save</source>
      <translation>Speichern nicht möglich</translation>
    </message>
    <message>
      <source>Export netlist</source>
      <translation>Netzliste exportieren</translation>
    </message>
    <message>
      <source>Netlists (*.cir)</source>
      <translation>Netzlisten (*.cir)</translation>
    </message>
    <message>
      <source>Problems</source>
      <translation>Probleme</translation>
    </message>
    <message>
      <source>Run</source>
      <translation>Start</translation>
    </message>
    <message>
      <source>Run through a parameter</source>
      <translation>Einen Parameter durchlaufen</translation>
    </message>
    <message>
      <source>cannot write %1: %2</source>
      <translation>kann %1 nicht schreiben: %2</translation>
    </message>
  </context>
  <context>
    <name>Simulator</name>
    <message>
      <source>%1 is no parameter of the circuit.</source>
      <translation>%1 ist kein Parameter der Schaltung.</translation>
    </message>
    <message>
      <source>A simulation is running.</source>
      <translation>Eine Simulation läuft.</translation>
    </message>
    <message>
      <source>The answer of the simulator breaks off: is there room on the disk?</source>
      <translation>Die Antwort des Simulators bricht ab: Ist auf der Platte noch Platz?</translation>
    </message>
    <message>
      <source>The simulation took longer than %1 s.</source>
      <translation>Die Simulation dauerte länger als %1 s.</translation>
    </message>
    <message>
      <source>The simulation was cancelled.</source>
      <translation>Die Simulation wurde abgebrochen.</translation>
    </message>
    <message>
      <source>The simulator %1 is not installed: install the package ngspice.</source>
      <translation>Der Simulator %1 ist nicht installiert: Installieren Sie das Paket ngspice.</translation>
    </message>
    <message>
      <source>The simulator answered no values.</source>
      <translation>Der Simulator hat keine Werte geliefert.</translation>
    </message>
    <message>
      <source>The simulator can not be started: %1.</source>
      <translation>Der Simulator kann nicht gestartet werden: %1.</translation>
    </message>
    <message>
      <source>The simulator complains about %1: %2</source>
      <translation>Der Simulator beanstandet %1: %2</translation>
    </message>
    <message>
      <source>The simulator complains: %1</source>
      <translation>Der Simulator beanstandet: %1</translation>
    </message>
    <message>
      <source>The simulator ended unexpectedly.</source>
      <translation>Der Simulator endete unerwartet.</translation>
    </message>
    <message>
      <source>The simulator failed.</source>
      <translation>Der Simulator ist gescheitert.</translation>
    </message>
    <message>
      <source>The simulator gave up.</source>
      <translation>Der Simulator hat aufgegeben.</translation>
    </message>
    <message>
      <source>There is no room for the simulation: %1.</source>
      <translation>Für die Simulation ist kein Platz: %1.</translation>
    </message>
  </context>
  <context>
    <name>WireMenu</name>
    <message>
      <source>Delete Parts of Node...</source>
      <translation>Delete Parts of Node...</translation>
    </message>
  </context>
  <context>
    <name>WorkSign</name>
    <message>
      <source>Cancel</source>
      <translation>Abbrechen</translation>
    </message>
  </context>
  <context>
    <name>gui</name>
    <message>
      <source>&amp;About</source>
      <translation>Ü&amp;ber</translation>
    </message>
    <message>
      <source>&amp;Add Output Variable</source>
      <translation>&amp;Ausgangsgröße hinzufügen</translation>
    </message>
    <message>
      <source>&amp;Any Element...</source>
      <translation>&amp;Beliebiges Element...</translation>
    </message>
    <message>
      <source>&amp;Cancel</source>
      <translation>&amp;Abbrechen</translation>
    </message>
    <message>
      <source>&amp;Copy</source>
      <translation>&amp;Kopieren</translation>
    </message>
    <message>
      <source>&amp;Dark Canvas</source>
      <translation>&amp;Dunkle Zeichenfläche</translation>
    </message>
    <message>
      <source>&amp;Delete	Del</source>
      <translation>&amp;Löschen	Entf</translation>
    </message>
    <message>
      <source>&amp;Edit</source>
      <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
      <source>&amp;Element Help</source>
      <translation>&amp;Elementhilfe</translation>
    </message>
    <message>
      <source>&amp;Examples</source>
      <translation>&amp;Beispiele</translation>
    </message>
    <message>
      <source>&amp;Export</source>
      <translation>&amp;Exportieren</translation>
    </message>
    <message>
      <source>&amp;File</source>
      <translation>&amp;Datei</translation>
    </message>
    <message>
      <source>&amp;Find...</source>
      <translation>&amp;Suchen...</translation>
    </message>
    <message>
      <source>&amp;Fit Drawing</source>
      <translation>Zeichnung &amp;einpassen</translation>
    </message>
    <message>
      <source>&amp;Help</source>
      <translation>&amp;Hilfe</translation>
    </message>
    <message>
      <source>&amp;Import...</source>
      <translation>&amp;Importieren...</translation>
    </message>
    <message>
      <source>&amp;JPEG...</source>
      <translation>&amp;JPEG...</translation>
    </message>
    <message>
      <source>&amp;Keys</source>
      <translation>&amp;Tasten</translation>
    </message>
    <message>
      <source>&amp;Lay Wires by Hand	W</source>
      <translation>&amp;Leitungen von Hand legen	W</translation>
    </message>
    <message>
      <source>&amp;Mirror	F</source>
      <translation>Sp&amp;iegeln	F</translation>
    </message>
    <message>
      <source>&amp;Natural Size</source>
      <translation>&amp;Natürliche Größe</translation>
    </message>
    <message>
      <source>&amp;New</source>
      <translation>&amp;Neu</translation>
    </message>
    <message>
      <source>&amp;Open...</source>
      <translation>Ö&amp;ffnen...</translation>
    </message>
    <message>
      <source>&amp;Operating Point Values</source>
      <translation>&amp;Werte des Arbeitspunkts</translation>
    </message>
    <message>
      <source>&amp;PNG...</source>
      <translation>&amp;PNG...</translation>
    </message>
    <message>
      <source>&amp;Paste</source>
      <translation>&amp;Einfügen</translation>
    </message>
    <message>
      <source>&amp;Place</source>
      <translation>&amp;Platzieren</translation>
    </message>
    <message>
      <source>&amp;Print...</source>
      <translation>&amp;Drucken...</translation>
    </message>
    <message>
      <source>&amp;Quit</source>
      <translation>&amp;Beenden</translation>
    </message>
    <message>
      <source>&amp;Redo</source>
      <translation>&amp;Wiederholen</translation>
    </message>
    <message>
      <source>&amp;Rotate	R</source>
      <translation>D&amp;rehen	R</translation>
    </message>
    <message>
      <source>&amp;Run</source>
      <translation>&amp;Start</translation>
    </message>
    <message>
      <source>&amp;SVG...</source>
      <translation>&amp;SVG...</translation>
    </message>
    <message>
      <source>&amp;Save</source>
      <translation>&amp;Speichern</translation>
    </message>
    <message>
      <source>&amp;Simulate</source>
      <translation>&amp;Simulieren</translation>
    </message>
    <message>
      <source>&amp;Texts in the Drawing</source>
      <translation>&amp;Texte in der Zeichnung</translation>
    </message>
    <message>
      <source>&amp;Undo</source>
      <translation>&amp;Rückgängig</translation>
    </message>
    <message>
      <source>&amp;User Guide</source>
      <translation>&amp;Handbuch</translation>
    </message>
    <message>
      <source>&amp;View</source>
      <translation>&amp;Ansicht</translation>
    </message>
    <message>
      <source>Add &amp;Text Box...</source>
      <translation>&amp;Textfeld hinzufügen...</translation>
    </message>
    <message>
      <source>All keys on one page</source>
      <translation>Alle Tasten auf einer Seite</translation>
    </message>
    <message>
      <source>Backspace</source>
      <translation>Rücktaste</translation>
    </message>
    <message>
      <source>Bring to &amp;Centre</source>
      <translation>In die &amp;Mitte bringen</translation>
    </message>
    <message>
      <source>Change the text of the selected netlist element</source>
      <translation>Den Text des gewählten Netzlistenelements ändern</translation>
    </message>
    <message>
      <source>Choose a type by typing, and place it</source>
      <translation>Einen Typ durch Tippen wählen und platzieren</translation>
    </message>
    <message>
      <source>Choose size and margins of the paper</source>
      <translation>Größe und Ränder des Papiers wählen</translation>
    </message>
    <message>
      <source>Circuit &amp;Help</source>
      <translation>Hilfe zur &amp;Schaltung</translation>
    </message>
    <message>
      <source>Clipboard</source>
      <translation>Zwischenablage</translation>
    </message>
    <message>
      <source>Close the application</source>
      <translation>Das Programm schließen</translation>
    </message>
    <message>
      <source>Copy as &amp;Picture</source>
      <translation>Als &amp;Bild kopieren</translation>
    </message>
    <message>
      <source>Copy the selection beside itself</source>
      <translation>Die Auswahl neben sich kopieren</translation>
    </message>
    <message>
      <source>Copy the selection to the clipboard</source>
      <translation>Die Auswahl in die Zwischenablage kopieren</translation>
    </message>
    <message>
      <source>Ctrl and drag</source>
      <translation>Strg und ziehen</translation>
    </message>
    <message>
      <source>Cu&amp;t</source>
      <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
      <source>Curves</source>
      <translation>Kurven</translation>
    </message>
    <message>
      <source>D&amp;uplicate</source>
      <translation>Verd&amp;oppeln</translation>
    </message>
    <message>
      <source>Delete the selection (Del on the canvas)</source>
      <translation>Die Auswahl löschen (Entf auf der Zeichenfläche)</translation>
    </message>
    <message>
      <source>Delete, Backspace</source>
      <translation>Entf, Rücktaste</translation>
    </message>
    <message>
      <source>Draw light on dark; pictures and paper stay white</source>
      <translation>Hell auf dunkel zeichnen; Bilder und Papier bleiben weiß</translation>
    </message>
    <message>
      <source>Edit</source>
      <translation>Bearbeiten</translation>
    </message>
    <message>
      <source>Edit &amp;Netlist...</source>
      <translation>&amp;Netzliste bearbeiten...</translation>
    </message>
    <message>
      <source>Edit the first value of what is selected (double click)</source>
      <translation>Den ersten Wert des Gewählten bearbeiten (Doppelklick)</translation>
    </message>
    <message>
      <source>Elements</source>
      <translation>Elemente</translation>
    </message>
    <message>
      <source>Escape</source>
      <translation>Escape</translation>
    </message>
    <message>
      <source>Export &amp;Netlist...</source>
      <translation>&amp;Netzliste exportieren...</translation>
    </message>
    <message>
      <source>Export Curves as &amp;SVG...</source>
      <translation>Kurven als &amp;SVG exportieren...</translation>
    </message>
    <message>
      <source>Export Curves as CS&amp;V...</source>
      <translation>Kurven als CS&amp;V exportieren...</translation>
    </message>
    <message>
      <source>F1</source>
      <translation>F1</translation>
    </message>
    <message>
      <source>File</source>
      <translation>Datei</translation>
    </message>
    <message>
      <source>Find an element, a net or a text by its name</source>
      <translation>Ein Element, ein Netz oder einen Text nach Namen finden</translation>
    </message>
    <message>
      <source>Help</source>
      <translation>Hilfe</translation>
    </message>
    <message>
      <source>How to draw a circuit</source>
      <translation>Wie man eine Schaltung zeichnet</translation>
    </message>
    <message>
      <source>Lay a wire point by point, from a terminal or wire to another</source>
      <translation>Eine Leitung Punkt für Punkt legen, von einem Anschluss oder einer Leitung zum anderen</translation>
    </message>
    <message>
      <source>Leave some room around exported pictures</source>
      <translation>Um exportierte Bilder etwas Rand lassen</translation>
    </message>
    <message>
      <source>Mirror the selected element: top to bottom, left to right, not at all</source>
      <translation>Das gewählte Element spiegeln: oben nach unten, links nach rechts, gar nicht</translation>
    </message>
    <message>
      <source>Move all free elements onto the grid</source>
      <translation>Alle freien Elemente aufs Raster setzen</translation>
    </message>
    <message>
      <source>Move the free elements to the centre of the canvas</source>
      <translation>Die freien Elemente in die Mitte der Zeichenfläche bringen</translation>
    </message>
    <message>
      <source>Move the selection to the clipboard</source>
      <translation>Die Auswahl in die Zwischenablage verschieben</translation>
    </message>
    <message>
      <source>Open &amp;Recent</source>
      <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
      <source>Open a drawing of another program</source>
      <translation>Die Zeichnung eines anderen Programms öffnen</translation>
    </message>
    <message>
      <source>Open a project or a circuit file</source>
      <translation>Ein Projekt oder eine Schaltungsdatei öffnen</translation>
    </message>
    <message>
      <source>Open the PDF beside the circuit file</source>
      <translation>Die PDF-Datei neben der Schaltungsdatei öffnen</translation>
    </message>
    <message>
      <source>Open the help page of the selected element (F1 on the canvas)</source>
      <translation>Die Hilfeseite des gewählten Elements öffnen (F1 auf der Zeichenfläche)</translation>
    </message>
    <message>
      <source>Output Variables</source>
      <translation>Ausgangsgrößen</translation>
    </message>
    <message>
      <source>P&amp;DF...</source>
      <translation>P&amp;DF...</translation>
    </message>
    <message>
      <source>P&amp;ostScript...</source>
      <translation>P&amp;ostScript...</translation>
    </message>
    <message>
      <source>P&amp;roperties</source>
      <translation>Ei&amp;genschaften</translation>
    </message>
    <message>
      <source>Page Set&amp;up...</source>
      <translation>Seite ein&amp;richten...</translation>
    </message>
    <message>
      <source>Paste From &amp;System Clipboard</source>
      <translation>Aus der &amp;System-Zwischenablage einfügen</translation>
    </message>
    <message>
      <source>Paste what another program has put in the clipboard</source>
      <translation>Einfügen, was ein anderes Programm in die Zwischenablage gelegt hat</translation>
    </message>
    <message>
      <source>Paste what was copied last, or the entry chosen in the clipboard panel</source>
      <translation>Das zuletzt Kopierte einfügen oder den gewählten Eintrag der Zwischenablage</translation>
    </message>
    <message>
      <source>Pick a terminal, wire or element of which the simulation is to record something</source>
      <translation>Anschluss, Leitung oder Element wählen, von dem die Simulation etwas aufzeichnen soll</translation>
    </message>
    <message>
      <source>Place</source>
      <translation>Platzieren</translation>
    </message>
    <message>
      <source>Print Pre&amp;view...</source>
      <translation>Druck&amp;vorschau...</translation>
    </message>
    <message>
      <source>Print the drawing</source>
      <translation>Die Zeichnung drucken</translation>
    </message>
    <message>
      <source>Properties</source>
      <translation>Eigenschaften</translation>
    </message>
    <message>
      <source>Put a picture of the drawing in the clipboard</source>
      <translation>Ein Bild der Zeichnung in die Zwischenablage legen</translation>
    </message>
    <message>
      <source>Put a text into the middle of the drawing</source>
      <translation>Einen Text in die Mitte der Zeichnung setzen</translation>
    </message>
    <message>
      <source>R, F</source>
      <translation>R, F</translation>
    </message>
    <message>
      <source>Redo the change that was undone last</source>
      <translation>Die zuletzt rückgängig gemachte Änderung wiederholen</translation>
    </message>
    <message>
      <source>Return, Space</source>
      <translation>Eingabe, Leertaste</translation>
    </message>
    <message>
      <source>Run the analysis of the project</source>
      <translation>Die Analyse des Projekts ausführen</translation>
    </message>
    <message>
      <source>Save &amp;As...</source>
      <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
      <source>Save the curves as a scalable picture</source>
      <translation>Die Kurven als skalierbares Bild speichern</translation>
    </message>
    <message>
      <source>Save the drawing as a JPEG picture</source>
      <translation>Die Zeichnung als JPEG-Bild speichern</translation>
    </message>
    <message>
      <source>Save the drawing as a PDF page</source>
      <translation>Die Zeichnung als PDF-Seite speichern</translation>
    </message>
    <message>
      <source>Save the drawing as a PNG picture</source>
      <translation>Die Zeichnung als PNG-Bild speichern</translation>
    </message>
    <message>
      <source>Save the drawing as a PostScript page</source>
      <translation>Die Zeichnung als PostScript-Seite speichern</translation>
    </message>
    <message>
      <source>Save the drawing as a scalable picture</source>
      <translation>Die Zeichnung als skalierbares Bild speichern</translation>
    </message>
    <message>
      <source>Save the project in another file</source>
      <translation>Das Projekt in einer anderen Datei speichern</translation>
    </message>
    <message>
      <source>Save the project in its file</source>
      <translation>Das Projekt in seiner Datei speichern</translation>
    </message>
    <message>
      <source>Save the values of all curves as a table</source>
      <translation>Die Werte aller Kurven als Tabelle speichern</translation>
    </message>
    <message>
      <source>Save what the simulator reads</source>
      <translation>Speichern, was der Simulator liest</translation>
    </message>
    <message>
      <source>Select &amp;All</source>
      <translation>A&amp;lles auswählen</translation>
    </message>
    <message>
      <source>Select the whole drawing</source>
      <translation>Die ganze Zeichnung auswählen</translation>
    </message>
    <message>
      <source>Show or hide all texts of the drawing</source>
      <translation>Alle Texte der Zeichnung zeigen oder verbergen</translation>
    </message>
    <message>
      <source>Show the drawing as it will be printed</source>
      <translation>Die Zeichnung zeigen, wie sie gedruckt wird</translation>
    </message>
    <message>
      <source>Show the drawing in its natural size</source>
      <translation>Die Zeichnung in natürlicher Größe zeigen</translation>
    </message>
    <message>
      <source>Show the whole drawing</source>
      <translation>Die ganze Zeichnung zeigen</translation>
    </message>
    <message>
      <source>Show voltages and currents at rest beside nets and elements</source>
      <translation>Spannungen und Ströme in Ruhe neben Netzen und Elementen zeigen</translation>
    </message>
    <message>
      <source>Simulate</source>
      <translation>Simulieren</translation>
    </message>
    <message>
      <source>Simulation</source>
      <translation>Simulation</translation>
    </message>
    <message>
      <source>Snap to &amp;Grid</source>
      <translation>Aufs &amp;Raster setzen</translation>
    </message>
    <message>
      <source>Start an empty project</source>
      <translation>Ein leeres Projekt beginnen</translation>
    </message>
    <message>
      <source>Stop the analysis that runs</source>
      <translation>Die laufende Analyse anhalten</translation>
    </message>
    <message>
      <source>Tab</source>
      <translation>Tab</translation>
    </message>
    <message>
      <source>Tab, Shift and Tab</source>
      <translation>Tab, Umschalt und Tab</translation>
    </message>
    <message>
      <source>Turn the selected element, or the one at the pointer, by 90 degrees</source>
      <translation>Das gewählte Element, oder das am Zeiger, um 90 Grad drehen</translation>
    </message>
    <message>
      <source>Undo the last change</source>
      <translation>Die letzte Änderung rückgängig machen</translation>
    </message>
    <message>
      <source>View</source>
      <translation>Ansicht</translation>
    </message>
    <message>
      <source>What this is</source>
      <translation>Was dies ist</translation>
    </message>
    <message>
      <source>With &amp;Operating Point</source>
      <translation>Mit &amp;Arbeitspunkt</translation>
    </message>
    <message>
      <source>With a &amp;Margin</source>
      <translation>Mit &amp;Rand</translation>
    </message>
    <message>
      <source>Write the values of the operating point into exported pictures</source>
      <translation>Die Werte des Arbeitspunkts in exportierte Bilder schreiben</translation>
    </message>
    <message>
      <source>Zoom &amp;In</source>
      <translation>Ver&amp;größern</translation>
    </message>
    <message>
      <source>Zoom &amp;Out</source>
      <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
      <source>Zoom in</source>
      <translation>Vergrößern</translation>
    </message>
    <message>
      <source>Zoom out</source>
      <translation>Verkleinern</translation>
    </message>
    <message>
      <source>adding an output variable</source>
      <translation>Ausgangsgröße hinzufügen</translation>
    </message>
    <message>
      <source>anything selected</source>
      <translation>Ausgewähltes</translation>
    </message>
    <message>
      <source>anywhere</source>
      <translation>überall</translation>
    </message>
    <message>
      <source>arrows, Ctrl and arrows</source>
      <translation>Pfeile, Strg und Pfeile</translation>
    </message>
    <message>
      <source>arrows, Shift and arrows</source>
      <translation>Pfeile, Umschalt und Pfeile</translation>
    </message>
    <message>
      <source>arrows, Tab, Return</source>
      <translation>Pfeile, Tab, Eingabe</translation>
    </message>
    <message>
      <source>begins at a terminal or wire, sets a corner, ends</source>
      <translation>beginnt an Anschluss oder Leitung, setzt eine Ecke, endet</translation>
    </message>
    <message>
      <source>brings the cross to the next terminal, to the one before</source>
      <translation>bringt das Kreuz zum nächsten Anschluss, zum vorigen</translation>
    </message>
    <message>
      <source>click</source>
      <translation>Klick</translation>
    </message>
    <message>
      <source>click, Return</source>
      <translation>Klick, Eingabe</translation>
    </message>
    <message>
      <source>click, Return, drag to the canvas</source>
      <translation>Klick, Eingabe, auf die Zeichenfläche ziehen</translation>
    </message>
    <message>
      <source>clicks where the cross is</source>
      <translation>klickt, wo das Kreuz ist</translation>
    </message>
    <message>
      <source>deletes it</source>
      <translation>löscht es</translation>
    </message>
    <message>
      <source>double click</source>
      <translation>Doppelklick</translation>
    </message>
    <message>
      <source>double click, F2</source>
      <translation>Doppelklick, F2</translation>
    </message>
    <message>
      <source>drag</source>
      <translation>ziehen</translation>
    </message>
    <message>
      <source>drag, arrows, Shift and arrows</source>
      <translation>ziehen, Pfeile, Umschalt und Pfeile</translation>
    </message>
    <message>
      <source>edits its first value; Return leads back</source>
      <translation>bearbeitet seinen ersten Wert; Eingabe führt zurück</translation>
    </message>
    <message>
      <source>edits the text</source>
      <translation>bearbeitet den Text</translation>
    </message>
    <message>
      <source>element</source>
      <translation>Element</translation>
    </message>
    <message>
      <source>empty canvas</source>
      <translation>leere Zeichenfläche</translation>
    </message>
    <message>
      <source>group</source>
      <translation>Gruppe</translation>
    </message>
    <message>
      <source>joins it to a terminal or wire</source>
      <translation>verbindet sie mit Anschluss oder Leitung</translation>
    </message>
    <message>
      <source>laying a wire</source>
      <translation>Leitung legen</translation>
    </message>
    <message>
      <source>lays a wire to a terminal, a wire or on by clicks</source>
      <translation>legt eine Leitung zu einem Anschluss, einer Leitung oder mit Klicks weiter</translation>
    </message>
    <message>
      <source>leads back: from a wire to its tool, from a tool to the selection, to nothing selected</source>
      <translation>führt zurück: von der Leitung zum Werkzeug, vom Werkzeug zur Auswahl, zu keiner Auswahl</translation>
    </message>
    <message>
      <source>makes the element chosen in the palette</source>
      <translation>macht das in der Palette gewählte Element</translation>
    </message>
    <message>
      <source>middle button and drag</source>
      <translation>mittlere Taste und ziehen</translation>
    </message>
    <message>
      <source>moves a cross by one, by ten grid steps</source>
      <translation>bewegt ein Kreuz um einen, um zehn Rasterschritte</translation>
    </message>
    <message>
      <source>moves a cross, brings it to the next element or terminal, picks there</source>
      <translation>bewegt ein Kreuz, bringt es zum nächsten Element oder Anschluss, wählt dort</translation>
    </message>
    <message>
      <source>moves by a grid step, by one unit</source>
      <translation>verschiebt um einen Rasterschritt, um eine Einheit</translation>
    </message>
    <message>
      <source>moves by one, by ten grid steps</source>
      <translation>verschiebt um einen, um zehn Rasterschritte</translation>
    </message>
    <message>
      <source>moves it</source>
      <translation>verschiebt es</translation>
    </message>
    <message>
      <source>opens its help page</source>
      <translation>öffnet seine Hilfeseite</translation>
    </message>
    <message>
      <source>palette</source>
      <translation>Palette</translation>
    </message>
    <message>
      <source>pans</source>
      <translation>verschiebt den Ausschnitt</translation>
    </message>
    <message>
      <source>places the type</source>
      <translation>platziert den Typ</translation>
    </message>
    <message>
      <source>placing</source>
      <translation>Platzieren</translation>
    </message>
    <message>
      <source>puts the element down; the next one hangs</source>
      <translation>setzt das Element ab; das nächste hängt</translation>
    </message>
    <message>
      <source>selects the next thing</source>
      <translation>wählt das Nächste</translation>
    </message>
    <message>
      <source>takes a group</source>
      <translation>nimmt eine Gruppe</translation>
    </message>
    <message>
      <source>takes the last corner back</source>
      <translation>nimmt die letzte Ecke zurück</translation>
    </message>
    <message>
      <source>terminal</source>
      <translation>Anschluss</translation>
    </message>
    <message>
      <source>text box</source>
      <translation>Textfeld</translation>
    </message>
    <message>
      <source>turns, mirrors</source>
      <translation>dreht, spiegelt</translation>
    </message>
    <message>
      <source>wheel</source>
      <translation>Rad</translation>
    </message>
    <message>
      <source>wire</source>
      <translation>Leitung</translation>
    </message>
    <message>
      <source>zooms at the pointer</source>
      <translation>zoomt am Zeiger</translation>
    </message>
  </context>
</TS>
