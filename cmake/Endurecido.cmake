# Lo que se publica se defiende de sus propios fallos: una escritura o un índice fuera de sitio detienen el programa, y
# no hay direcciones fijas que aprovechar. En los demás preajustes lo hacen los saneadores.
add_compile_options("$<$<CONFIG:Release>:-fstack-protector-strong;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
add_compile_definitions($<$<CONFIG:Release>:_GLIBCXX_ASSERTIONS>)
if(WIN32)
  # De la mingw-w64 de Debian: ASLR de 64 bits y DEP, que el enlazador pone también por su cuenta.
  # La protección de la pila está allí en una biblioteca, que se enlaza si se pide también al enlazar.
  add_link_options("$<$<CONFIG:Release>:-fstack-protector-strong;LINKER:--dynamicbase,--high-entropy-va,--nxcompat>")
else()
  add_compile_options("$<$<CONFIG:Release>:-fPIE;-fstack-clash-protection;-fcf-protection>")
  add_link_options("$<$<CONFIG:Release>:-pie;LINKER:-z,relro,-z,now>")
endif()
