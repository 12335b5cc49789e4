#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Plays with nothing but keys and assistive actions, on a display and on buses of its own, and checks what a screen
reader is told; where Orca is installed, what it speaks, too. Usage: hear.py PROGRAM [TRANSCRIPT]

Exit code 77: something that this needs is not installed. Every wait is for a condition, within a bound."""
import os, re, shutil, subprocess, sys, tempfile, threading, time

def skip(why):
    print('skipped:', why)
    sys.exit(77)

for tool in 'Xvfb', 'openbox', 'xdotool', 'dbus-daemon':
    if not shutil.which(tool): skip(tool + ' is not installed')
if not os.path.exists('/usr/libexec/at-spi-bus-launcher'): skip('at-spi2-core is not installed')

box = tempfile.mkdtemp(prefix='ninarix-hear-')
for name in list(os.environ):
    if re.match('XDG_|DBUS_|AT_SPI|QT_|GTK_|WAYLAND|SESSION|NO_AT_', name): del os.environ[name]
os.environ.update(HOME=box, XDG_RUNTIME_DIR=box, LC_ALL='C.UTF-8', QT_QPA_PLATFORM='xcb', GSETTINGS_BACKEND='memory',
                  QT_STYLE_OVERRIDE='fusion', QT_LINUX_ACCESSIBILITY_ALWAYS_ON='1')
running, heard, null, diary, focus = [], [], subprocess.DEVNULL, b'', ''

def start(*command, output=None):
    log = open(box + '/' + os.path.basename(command[0]) + '.log', 'w')
    running.append(subprocess.Popen(('setpriv', '--pdeathsig', 'TERM') + command, stdout=output or log, stderr=log))
    return running[-1]

def until(what, condition):
    end = time.monotonic() + 60
    while not condition():
        if time.monotonic() > end: raise SystemExit('FAILED: %s; heard: %s' % (what, heard[-8:]))
        serve()
        time.sleep(0.01)

def serve():
    while GLib and GLib.MainContext.default().iteration(False): pass

def read_diary(terminal):
    global diary
    while True: diary += os.read(terminal, 65536)

def spoken():
    """All that Orca said but the keys, whose lines have a blank more."""
    return re.findall(r"SPEECH OUTPUT: '(.*)'\{", diary.decode(errors='replace').replace('\r', ''))

def listen(event):
    """Notes what belongs to the game: focus and value of cells, announcements, message boxes."""
    global focus
    try:
        node, role, name = event.source, event.source.getRoleName(), event.source.name
        text = node.queryText().getText(0, -1) if role == 'spin button' else ''
        if role == 'spin button' and 'accessible-name' in event.type: heard.append('renamed')
        elif role == 'spin button' and 'value' in event.type: heard.append(text)
        elif role == 'spin button' and 'focused' in event.type and event.detail1:
            if focus != (focus := name + ' ' + text): heard.append(focus)
        elif role == 'notification' and 'showing' in event.type: heard.append(name)
        elif role == 'alert' and event.type.startswith('window:activate'):
            focus = ''
            heard.append('! ' + ' '.join(child.name for child in node if child and child.getRoleName() == 'label'))
    except (GLib.Error, LookupError, RuntimeError): pass  # it is gone already

def node(name, role=None):
    """The one object of the program that is called so now."""
    for app in pyatspi.Registry.getDesktop(0):
        if app and app.name == 'Ninarix':
            return pyatspi.findDescendant(
                app, lambda n: n.clearCache() or n.name == name and role in (None, n.getRoleName()))
    return None

def press(*what): node(*what).queryAction().doAction(0)
def key(keys): subprocess.run(['xdotool', 'key', '--delay', '6', keys], check=True)
def value(name, digit): node(name).queryValue().currentValue = digit

GLib = None
try:
    bus = start('dbus-daemon', '--session', '--nofork', '--print-address', output=subprocess.PIPE)
    os.environ['DBUS_SESSION_BUS_ADDRESS'] = bus.stdout.readline().decode().strip()
    server = start('Xvfb', '-displayfd', '1', '-screen', '0', '1366x768x24', '-r', '-noreset', output=subprocess.PIPE)
    os.environ['DISPLAY'] = ':' + server.stdout.readline().decode().strip()
    with open(box + '/openbox.xml', 'w') as file:
        file.write('<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard/><mouse/></openbox_config>')
    start('openbox', '--sm-disable', '--config-file', box + '/openbox.xml')
    until('a window manager', lambda: not subprocess.call(['xdotool', 'get_num_desktops'], stdout=null, stderr=null))
    start('/usr/libexec/at-spi-bus-launcher', '--launch-immediately')
    try:
        import pyatspi
        from gi.repository import GLib
    except ImportError: skip('python3-pyatspi is not installed')
    pyatspi.Registry.registerEventListener(  # the whole names: the toolkit looks for them alone
        listen, 'object:property-change:accessible-value', 'object:property-change:accessible-name',
        'object:state-changed:focused', 'object:state-changed:showing', 'window:activate')

    orca = shutil.which('orca')  # without a speech server it writes down all the same what it would say
    if orca:
        # Into a file it would not write line by line; and it stops when nobody reads.
        terminal, orcas_end = os.openpty()
        threading.Thread(target=read_diary, args=(terminal,), daemon=True).start()
        start('orca', '--replace', '--debug-file=' + os.ttyname(orcas_end))
        until('Orca speaks', spoken)

    os.mkdir(box + '/app')
    shutil.copy(sys.argv[1], box + '/app/Ninarix')
    with open(box + '/app/Ninarix.ini', 'w') as file: file.write('[Options]\r\nNoSplash=1\r\n')
    solution = '534678912672195348198342567859761423426853791713924856961537284287419635345286179'
    with open(box + '/puzzle.nx3', 'w') as file:
        file.write('[]\r\n' + ''.join('%d=%s\r\n' % (i + 1, '0|0|0' if i in (2, 3) else solution[i] + '|1|0')
                                      for i in range(81)))
    start(box + '/app/Ninarix', box + '/puzzle.nx3')
    until('the program has the keyboard', lambda: node('Ligne 1, colonne 3') and not subprocess.call(
        'xdotool getactivewindow getwindowname | grep -qx "Ninarix - puzzle"', shell=True, stderr=null))

    # What is done, and what is told of it, in that order. A key is a text.
    third, fourth = 'Ligne 1, colonne 3', 'Ligne 1, colonne 4'
    full = 'Grille complète'
    moves = [(lambda: press(third), [third + ' vide']),
             ('Left', ['Ligne 1, colonne 2, donnée 3']), ('5', ['Case donnée']), ('Right', [third + ' vide']),
             ('space', ['candidat 4']), ('9', ['9 impossible ici']),
             ('ctrl+4', ['4 exclu']), ('4', ['4 exclu']), ('ctrl+4', ['4 réadmis']),
             ('4', ['4']), ('ctrl+z', ['vide']), ('ctrl+y', ['4']),
             ('ctrl+m', ["Chiffres d'aide manuels : oui"]), ('ctrl+m', ["Chiffres d'aide manuels : non"]),
             (lambda: press('Annuler'), ['vide']), (lambda: press('Exclure le 4'), ['4 exclu']),
             (lambda: press('Réadmettre le 4'), ['4 réadmis']),
             (lambda: value(third, 9), ['9 impossible ici']), (lambda: value(third, 4), ['4']),
             ('F4', ["! Il n'y a aucune erreur."]), ('Return', [third + ' 4']), ('Right', [fourth + ' vide']),
             (lambda: press('Mettre 6'), ['6', full, '! Bravo, la grille est terminée.']),
             (lambda: press('OK'), [fourth + ' 6']),
             ('ctrl+n', ['Mode Initialisation : oui', 'Grille1, Cases vides : 81', 'Ligne 1, colonne 1 vide']),
             (lambda: press('Mode Initialisation', 'check box'), ['Mode Initialisation : non']),
             ('ctrl+Tab', ['puzzle, ' + full, fourth + ' 6'])]
    transcript = ''
    for what, told in moves:
        before, said = len(heard), len(spoken()) if orca else 0
        key(what) if isinstance(what, str) else what()
        until('%s tells %s' % (what, told), lambda: len(heard) >= before + len(told))
        if sorted(heard[before:]) != sorted(told):
            raise SystemExit('FAILED: %s tells %s instead of %s' % (what, heard[before:], told))
        if orca:
            until('%s is spoken %s' % (spoken()[said:], told), lambda: all(
                any(line.startswith(part.lstrip('! ')) for line in spoken()[said:]) for part in told))
            transcript += '%-8s %s\n' % (what if isinstance(what, str) else 'action', ' / '.join(spoken()[said:]))
    with open(box + '/Ninarix.log') as log:
        if 'ccessib' in (said := log.read()): raise SystemExit('FAILED: the toolkit complains: ' + said)
    print(transcript + 'The whole game was heard.')
    if sys.argv[2:]: open(sys.argv[2], 'w').write(transcript)
finally:
    for process in reversed(running): process.terminate()
    for process in running: process.wait()
    shutil.rmtree(box, ignore_errors=True)
