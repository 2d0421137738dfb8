# Makes the tree that the contract test of files lists, links included: cmake -DTREE=... -P. Links
# are the file system's own, which both builds of the test see.
file(REMOVE_RECURSE ${TREE})
file(MAKE_DIRECTORY ${TREE}/empty ${TREE}/links/folder ${TREE}/broken)
file(WRITE ${TREE}/plain.txt "eleven byte")
file(WRITE ${TREE}/.dotted "x")
file(WRITE ${TREE}/sealed.txt "x")
file(CHMOD ${TREE}/sealed.txt PERMISSIONS OWNER_READ)

file(WRITE ${TREE}/links/file.txt "x")
file(CREATE_LINK folder ${TREE}/links/to_folder SYMBOLIC)
file(CREATE_LINK .. ${TREE}/links/to_parent SYMBOLIC)
file(CREATE_LINK file.txt ${TREE}/links/to_file SYMBOLIC)
file(CREATE_LINK nowhere ${TREE}/broken/to_nothing SYMBOLIC)

foreach(name abc ABCD.txt abcdef ab xabc "Über.txt" "überall" "uber")
  file(WRITE ${TREE}/prefix/${name} "x")
endforeach()
foreach(name "Größe" "Размер" "μέγεθος" "尺寸" "サイズ" "크기" "גודל" "حجم" "ขนาด" "आकार" "📐"
             "é" "a b" "a;b" "100%" "#1" "a." "~x")
  file(WRITE "${TREE}/scripts/${name}" "x")
endforeach()

string(REPEAT "a" 255 ascii)
string(REPEAT "尺" 85 wide)
file(WRITE ${TREE}/long/${ascii} "x")
file(WRITE ${TREE}/long/${wide} "x")

foreach(number RANGE 1 3000)
  file(WRITE ${TREE}/many/entry_with_a_name_of_middling_length_${number} "")
endforeach()
