"""Una pantalla sin monitor en la que se mide cuánto tarda un programa en enseñar su ventana."""

import mmap
import os
import pathlib
import subprocess
import time

from Xlib import X, display
from Xlib.protocol import event

ANCHO, ALTO = 1280, 800
APRECIABLE = 30     # menos filas o columnas distintas que estas son un cursor o una barra de desplazamiento
CALMA = 1.0         # segundos sin cambiar de aspecto, contestando y sin trabajar, para darla por acabada
PACIENCIA = 5.0     # o estos, aunque siga trabajando por dentro
ATASCO = 0.1        # tardar más que esto en contestar es no responder


class Pantalla:
    """Un servidor X con su gestor de ventanas. La imagen se lee de la memoria del servidor, sin pedírsela."""

    def __init__(self, carpeta):
        self.entorno = {**os.environ, "HOME": str(carpeta), "LC_ALL": "C.UTF-8", "NO_AT_BRIDGE": "1",
                        "QT_QPA_PLATFORM": "xcb"}
        for nombre in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "WAYLAND_DISPLAY"):
            self.entorno.pop(nombre, None)
        leer, escribir = os.pipe()
        self.procesos = [subprocess.Popen(
            ["Xvfb", "-displayfd", str(escribir), "-screen", "0", f"{ANCHO}x{ALTO}x24", "-fbdir", str(carpeta),
             "-nolisten", "tcp"], pass_fds=[escribir], stderr=subprocess.DEVNULL)]
        os.close(escribir)
        with os.fdopen(leer) as tubo:
            numero = tubo.readline().strip()
        if not numero:
            raise SystemExit("Xvfb no arranca.")
        self.entorno["DISPLAY"] = ":" + numero
        self.procesos.append(subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"],
                                              env=self.entorno, stdout=subprocess.PIPE,
                                              stderr=subprocess.DEVNULL, text=True))
        self.entorno["DBUS_SESSION_BUS_ADDRESS"] = self.procesos[-1].stdout.readline().strip()
        self.conexion = display.Display(":" + numero)
        with open(pathlib.Path(carpeta) / "Xvfb_screen0", "rb") as f:
            self.imagen = mmap.mmap(f.fileno(), 0, access=mmap.ACCESS_READ)
        self.raiz = self.conexion.screen().root
        self.raiz.change_attributes(event_mask=X.SubstructureNotifyMask | X.StructureNotifyMask)
        self.procesos.append(subprocess.Popen(["openbox"], env=self.entorno, stderr=subprocess.DEVNULL))
        while not self.lista():
            time.sleep(0.02)

    def cerrar(self):
        self.conexion.close()
        for proceso in reversed(self.procesos):
            terminar(proceso)

    def atomo(self, nombre):
        return self.conexion.intern_atom(nombre)

    def lista(self):
        return self.raiz.get_full_property(self.atomo("_NET_CLIENT_LIST"), X.AnyPropertyType)

    def ventana(self, titulo):
        """La ventana a la vista cuyo título contiene `titulo`, o nada."""
        for numero in self.lista().value:
            ventana = self.conexion.create_resource_object("window", numero)
            try:
                nombre = ventana.get_full_property(self.atomo("_NET_WM_NAME"), X.AnyPropertyType)
                if nombre and titulo in nombre.value.decode("utf-8", "replace") and \
                        ventana.get_attributes().map_state == X.IsViewable:
                    return ventana
            except Exception:  # se cerró mientras se miraba
                continue
        return None

    def preguntar(self, ventana):
        """Pide a la ventana que conteste cuando atienda a sus mensajes (_NET_WM_PING)."""
        ventana.send_event(event.ClientMessage(
            window=ventana, client_type=self.atomo("WM_PROTOCOLS"),
            data=(32, [self.atomo("_NET_WM_PING"), X.CurrentTime, ventana.id, 0, 0])))
        self.conexion.flush()

    def contestado(self):
        hay = False
        while self.conexion.pending_events():
            e = self.conexion.next_event()
            hay |= e.type == X.ClientMessage and e.data[1][0] == self.atomo("_NET_WM_PING")
        return hay

    def mostrar(self, orden, titulo, limite=60):
        """Arranca `orden` y espera a que su ventana esté a la vista, conteste y haya acabado de dibujarse. Da los
        segundos hasta el último de esos tres momentos, el proceso, que queda vivo, y la imagen final."""
        self.contestado()
        inicio = time.perf_counter()
        proceso = subprocess.Popen(orden, env=self.entorno, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        cambio = responde = inicio
        antes, pregunta, ventana = self.imagen[:], None, None
        trabajo, desde = procesador(proceso), inicio
        while (ahora := time.perf_counter()) - inicio < limite and proceso.poll() is None:
            foto = self.imagen[:]
            if distinta(foto, antes):
                antes, cambio = foto, ahora
            ventana = ventana or self.ventana(titulo)
            if ventana and pregunta is None:
                self.preguntar(ventana)
                pregunta = ahora
            if pregunta is not None and self.contestado():
                if responde == inicio or ahora - pregunta > ATASCO:
                    responde = ahora
                pregunta = None
            if max(cambio, responde) > desde:
                trabajo, desde = procesador(proceso), ahora
            elif responde > inicio and pregunta is None and ahora - desde > CALMA:
                if procesador(proceso) - trabajo < CALMA / 5 or ahora - max(cambio, responde) > PACIENCIA:
                    return max(cambio, responde) - inicio, proceso, foto
                trabajo, desde = procesador(proceso), ahora
            time.sleep(0.004)
        terminar(proceso)
        raise SystemExit(f"{orden[0]} no enseñó «{titulo}» en {limite} s.")


def distinta(una, otra):
    """Si entre las dos imágenes hay un cambio apreciable, a lo alto y a lo ancho."""
    if una == otra:
        return False
    largo = 4 * ANCHO
    filas, columnas = 0, 0
    for i in range(0, len(una), largo):
        if una[i:i + largo] != otra[i:i + largo]:
            filas += 1
            columnas |= int.from_bytes(una[i:i + largo], "little") ^ int.from_bytes(otra[i:i + largo], "little")
    primera = (columnas & -columnas).bit_length()
    return filas >= APRECIABLE and columnas.bit_length() - primera >= 32 * APRECIABLE


def procesador(proceso):
    """Segundos de procesador gastados por el proceso."""
    campos = pathlib.Path(f"/proc/{proceso.pid}/stat").read_text().rpartition(")")[2].split()
    return (int(campos[11]) + int(campos[12])) / os.sysconf("SC_CLK_TCK")


def pico_mb(proceso):
    """Memoria máxima del proceso hasta ahora, en MB."""
    lineas = pathlib.Path(f"/proc/{proceso.pid}/status").read_text().splitlines()
    return int(next(x for x in lineas if x.startswith("VmHWM")).split()[1]) / 1024


def terminar(proceso):
    proceso.terminate()
    try:
        proceso.wait(3)
    except subprocess.TimeoutExpired:
        proceso.kill()
        proceso.wait()
