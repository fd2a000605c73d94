# La misma unión que «q19 unir», para compararlas: del primer fichero, el presentador y el acreedor; de todos, los
# adeudos; del último, los totales, rehechos. Escribe los mismos bytes. Registros de 600 posiciones con CR LF.
# Uso: LC_ALL=C awk -v ficheros=N -f unir.awk FICHERO... > UNIDA
BEGIN { RS = ORS = "\r\n" }
FNR == 1 { ++fichero }
{ codigo = substr($0, 1, 2) }
codigo == "03" {
  if (substr($0, 8, 3) == "003") { importe += substr($0, 89, 11); ++adeudos }
  ++registros
  print
  next
}
codigo == "01" || codigo == "02" {
  if (fichero > 1) next
  if (codigo == "02") { ++registros; fecha = substr($0, 46, 8) }
  print
  next
}
fichero < ficheros { next }
codigo == "04" { print substr($0, 1, 37) fecha cifras(++registros) substr($0, 81); next }
codigo == "05" { print substr($0, 1, 37) cifras(++registros) substr($0, 73); next }
codigo == "99" { print substr($0, 1, 2) cifras(++registros + 1) substr($0, 38) }
function cifras(total) { return sprintf("%017d%08d%010d", importe, adeudos, total) }
