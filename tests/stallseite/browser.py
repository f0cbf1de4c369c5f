"""Works the phone's page in Chromium without a window, over the browser's pipe; needs nothing but Python."""
import base64
import json
import os
import shutil
import signal
import subprocess
import time

PROGRAM = shutil.which('chromium') or shutil.which('chromium-browser') or shutil.which('google-chrome')
TIMEOUT = 30


class Browser:
    """A browser with a profile folder of its own, which outlives it."""

    def __init__(self, profile):
        to_browser, self.out = os.pipe()
        self.inn, from_browser = os.pipe()

        def place():  # the browser listens on 3 and speaks on 4
            ends = os.dup(to_browser), os.dup(from_browser)
            os.dup2(ends[0], 3)
            os.dup2(ends[1], 4)

        self.process = subprocess.Popen(
            [PROGRAM, '--headless=new', '--no-sandbox', '--disable-gpu', '--disable-dev-shm-usage', '--lang=de-DE',
             '--no-first-run', '--disable-extensions', '--disable-background-networking',
             '--remote-debugging-pipe', '--user-data-dir=' + profile, 'about:blank'],
            close_fds=False, preexec_fn=place, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            start_new_session=True)
        os.close(to_browser)
        os.close(from_browser)
        self.count, self.rest, self.events = 0, b'', []

    def call(self, method, session=None, **params):
        self.count += 1
        message = {'id': self.count, 'method': method, 'params': params}
        if session:
            message['sessionId'] = session
        os.write(self.out, json.dumps(message).encode() + b'\0')
        while True:
            answer = self.read()
            if answer.get('id') == self.count:
                if 'error' in answer:
                    raise RuntimeError(f"{method}: {answer['error']['message']}")
                return answer['result']
            self.events.append(answer)

    def read(self):
        while b'\0' not in self.rest:
            part = os.read(self.inn, 1 << 20)
            if not part:
                raise RuntimeError('Der Browser ist weg.')
            self.rest += part
        line, self.rest = self.rest.split(b'\0', 1)
        return json.loads(line)

    def page(self, downloads, width=390, height=844, dark=False, before=''):
        target = self.call('Target.createTarget', url='about:blank')['targetId']
        session = self.call('Target.attachToTarget', targetId=target, flatten=True)['sessionId']
        return Page(self, session, downloads, width, height, dark, before)

    def kill(self):
        os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()
        os.close(self.out)
        os.close(self.inn)


class Page:
    """`before` is a script that runs in each document before its own."""

    def __init__(self, browser, session, downloads, width, height, dark, before):
        self.browser, self.session = browser, session
        for domain in ('Page', 'Runtime', 'Network', 'Log'):
            self.call(domain + '.enable')
        self.call('Emulation.setDeviceMetricsOverride', width=width, height=height, deviceScaleFactor=2, mobile=True)
        self.call('Emulation.setTouchEmulationEnabled', enabled=True)
        self.call('Emulation.setEmulatedMedia',
                  features=[{'name': 'prefers-color-scheme', 'value': 'dark' if dark else 'light'}])
        self.call('Page.addScriptToEvaluateOnNewDocument', source=before)
        browser.call('Browser.setDownloadBehavior', behavior='allow', downloadPath=downloads)

    def call(self, method, **params):
        return self.browser.call(method, self.session, **params)

    def run(self, script):
        """The value of an expression; promises are waited for."""
        answer = self.call('Runtime.evaluate', expression=script, awaitPromise=True, returnByValue=True)
        if 'exceptionDetails' in answer:
            details = answer['exceptionDetails']
            raise RuntimeError(details.get('exception', {}).get('description') or details['text'])
        return answer['result'].get('value')

    def wait(self, script, what=None):
        """Until the expression is true, whatever the page loads meanwhile; what it then is."""
        end = time.monotonic() + TIMEOUT
        while time.monotonic() < end:
            try:
                if found := self.run(f'(() => {{ try {{ const found = {script}; return found instanceof Node || found; }} catch {{ return false; }} }})()'):
                    return found
            except RuntimeError as error:
                if 'navigated' not in str(error) and 'context' not in str(error):
                    raise
            time.sleep(0.02)
        raise RuntimeError(f"Vergeblich gewartet: {what or script}\n{self.run('document.body.innerText')}")

    def open(self, address):
        self.call('Page.navigate', url=address)
        self.wait("document.querySelector('main h1')", 'die Seite')

    def press(self, text, within='document'):
        """Taps the button or link of these words, as soon as it is there and nothing covers it."""
        words = json.dumps(text)
        spot = self.wait(f'''(() => {{
            const hit = [...{within}.querySelectorAll('button, a, summary')].find((one) =>
                (one.innerText.trim() === {words} || one.ariaLabel === {words}) && one.offsetParent !== null);
            if (!hit) return false;
            hit.scrollIntoView({{block: 'center'}});
            const box = hit.getBoundingClientRect();
            const at = [box.x + box.width / 2, box.y + box.height / 2];
            return hit.contains(document.elementFromPoint(...at)) && at;
        }})()''', 'Knopf ' + text)
        for kind in ('mousePressed', 'mouseReleased'):
            self.call('Input.dispatchMouseEvent', type=kind, x=spot[0], y=spot[1], button='left', clickCount=1)

    def type(self, field, text):
        """Puts a text into a field as a keyboard of the phone does, and leaves it."""
        self.run(f'''(() => {{
            const input = document.querySelector('[name="' + CSS.escape({json.dumps(field)}) + '"]');
            input.closest('details')?.setAttribute('open', '');
            input.focus();
            input.select?.();
            if (input.type === 'date') {{
                input.value = {json.dumps(text)};
                input.dispatchEvent(new Event('input'));
                input.dispatchEvent(new Event('change'));
            }}
        }})()''')
        if self.run('document.activeElement.type') != 'date':
            self.run('document.execCommand("delete")')
            if text:
                self.call('Input.insertText', text=text)
        self.run('document.activeElement.blur()')

    def picture(self, path):
        with open(path, 'wb') as file:
            file.write(base64.b64decode(self.call('Page.captureScreenshot', format='png')['data']))
