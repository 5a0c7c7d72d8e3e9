# cmake -D SOURCE=text -D TARGET=pdf -P TextToPdf.cmake
# Writes a PDF of one page from an ASCII text: the first line is the title; a line behind an empty one is a heading.

set(margin 56)
set(top 760)

# Content of the page: one text object, in which "n 0 -d Td" moves to the next line.
set(content "BT\n${margin} ${top} Td\n")
set(style "/Bold 20 Tf")
file(STRINGS "${SOURCE}" lines)
foreach(line IN LISTS lines)
  if(line STREQUAL "")
    string(APPEND content "0 -12 Td\n")
    set(style "/Bold 12 Tf")
    continue()
  endif()
  string(REGEX REPLACE "([\\()])" "\\\\\\1" line "${line}")
  string(APPEND content "${style} (${line}) Tj\n0 -16 Td\n")
  set(style "/Plain 9 Tf")
endforeach()
string(APPEND content "ET\n")
string(LENGTH "${content}" length)

set(objects
  "<< /Type /Catalog /Pages 2 0 R >>"
  "<< /Type /Pages /Kids [ 3 0 R ] /Count 1 >>"
  "<< /Type /Page /Parent 2 0 R /MediaBox [ 0 0 595 842 ] /Resources << /Font << /Plain 4 0 R /Bold 5 0 R >> >> /Contents 6 0 R >>"
  "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>"
  "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding /WinAnsiEncoding >>")
set(stream "<< /Length ${length} >>\nstream\n${content}endstream")

# ISO 32000-1, 7.5: header, objects, cross-reference table of 20 bytes a line, trailer.
set(pdf "%PDF-1.4\n")
set(xref "0000000000 65535 f \n")
set(number 0)
foreach(object IN LISTS objects ITEMS "${stream}")
  math(EXPR number "${number} + 1")
  string(LENGTH "${pdf}" offset)
  string(LENGTH "${offset}" digits)
  math(EXPR zeros "10 - ${digits}")
  string(REPEAT "0" ${zeros} padding)
  string(APPEND xref "${padding}${offset} 00000 n \n")
  string(APPEND pdf "${number} 0 obj\n${object}\nendobj\n")
endforeach()
string(LENGTH "${pdf}" start)
math(EXPR size "${number} + 1")
string(APPEND pdf
  "xref\n0 ${size}\n${xref}trailer\n<< /Size ${size} /Root 1 0 R >>\nstartxref\n${start}\n%%EOF\n")
file(WRITE "${TARGET}" "${pdf}")
