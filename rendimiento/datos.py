"""Remesas de medida: válidas, sin nada que decir de ellas y siempre iguales."""

import random

ACREEDOR = "ES08000E77846772"
CUENTA = "ES9121000418450200051332"  # del acreedor
HOY, COBRO = "20261102", "20261201"


def linea(texto):
    return texto.ljust(600).encode("cp1252") + b"\r\n"


def importe(n):
    """En céntimos; diez millones de adeudos aún caben en los contadores de 32 bits."""
    return n % 200 + 1


def cuenta(n):
    """El IBAN de un deudor, cada uno el suyo."""
    numero = f"{n:010d}"
    digito = 11 - sum(p * (n // 10**i % 10) for i, p in enumerate((6, 3, 7, 9, 10, 5, 8, 4, 2, 1))) % 11
    ccc = f"210004184{digito % 11 if digito != 10 else 1}{numero}"
    return f"ES{98 - int(ccc + '142800') % 97:02d}{ccc}"


def hacer_remesa(ruta, adeudos, desde=0, avisos=False):
    """`adeudos` adeudos, numerados desde `desde`; con `avisos`, cuatro cada uno al comprobarla."""
    nombre, concepto, tipo = ("PEÑA", "CUOTA DE AÑO", "FRSTZZZZ") if avisos else ("DEUDOR", "CUOTA MENSUAL", "RCUR    ")
    cola = (" " * 14 + concepto).ljust(173).encode("cp1252") + b"\r\n"
    medio = "20200101".ljust(19)
    with open(ruta, "wb") as f:
        f.write(linea(f"0119143001{ACREEDOR}".ljust(45) + "PRESENTADOR".ljust(70) + HOY + f"PRE{HOY}12000000000".ljust(35)
                      + "21000418"))
        f.write(linea((f"0219143002{ACREEDOR}".ljust(45) + COBRO + "ACREEDOR").ljust(265) + CUENTA))
        for base in range(desde, desde + adeudos, 10000):
            f.write(b"".join(
                f"0319143003{n:035d}MANDATO{n:<28d}{tipo}{importe(n):011d}{medio}{f'{nombre} {n}':<284}A{cuenta(n)}"
                .encode("cp1252") + cola
                for n in range(base, min(base + 10000, desde + adeudos))))
        total = sum(importe(n) for n in range(desde, desde + adeudos))
        for codigo, fecha, mas in (("04", COBRO, 2), ("05", "", 3)):
            f.write(linea((codigo + ACREEDOR).ljust(37) + fecha + f"{total:017d}{adeudos:08d}{adeudos + mas:010d}"))
        f.write(linea(f"99{total:017d}{adeudos:08d}{adeudos + 5:010d}"))


def hacer_bloques(ruta, adeudos, desde=0, mezclados=False):
    """Dos acreedores y tres fechas de cobro, con los adeudos por orden de referencia o, en cada bloque, en cualquiera."""
    azar, n, general = random.Random(desde), desde, (0, 0, 1)
    cola = (" " * 14 + "CUOTA MENSUAL").ljust(173).encode("cp1252") + b"\r\n"

    def totales(*sumas):
        return tuple(map(sum, zip(*sumas)))

    with open(ruta, "wb") as f:
        f.write(linea(f"0119143001{ACREEDOR}".ljust(45) + "PRESENTADOR".ljust(70) + HOY + f"PRE{HOY}12000000000".ljust(35)
                      + "21000418"))
        for acreedor in (ACREEDOR, "ES03000W9614457A"):
            suyo = (0, 0, 0)
            for dia in ("01", "15", "22"):
                f.write(linea((f"0219143002{acreedor}".ljust(45) + COBRO[:6] + dia + "ACREEDOR").ljust(265) + CUENTA))
                numeros = list(range(n, n + adeudos // 6))
                n += len(numeros)
                if mezclados:
                    azar.shuffle(numeros)
                f.write(b"".join(
                    f"0319143003{i:035d}MANDATO{i:<28d}RCUR    {importe(i):011d}{'20200101':<19}{f'DEUDOR {i}':<284}A{cuenta(i)}"
                    .encode("cp1252") + cola for i in numeros))
                bloque = (sum(map(importe, numeros)), len(numeros), len(numeros) + 2)
                f.write(linea(("04" + acreedor).ljust(37) + COBRO[:6] + dia + "%017d%08d%010d" % bloque))
                suyo = totales(suyo, bloque)
            suyo = totales(suyo, (0, 0, 1))
            f.write(linea(("05" + acreedor).ljust(37) + "%017d%08d%010d" % suyo))
            general = totales(general, suyo)
        f.write(linea("99%017d%08d%010d" % totales(general, (0, 0, 1))))


def hacer_tabla(ruta, filas):
    """Las filas del listado de esa remesa, en CSV, para quien no lee remesas."""
    cuenta = " ".join(CUENTA[i:i + 4] for i in range(0, 24, 4))
    with open(ruta, "w", encoding="ascii") as f:
        f.write("Nombre,Importe,IBAN,Concepto,Referencia\n")
        for n in range(filas):
            f.write(f"DEUDOR {n},{importe(n) / 100:.2f},IBAN {cuenta},CUOTA MENSUAL DE MANTENIMIENTO,R{n:034d}\n")
