// SPDX-License-Identifier: Apache-2.0

// A learner who comes to the learning platform at this address with a window of this size. Beside what a page of
// Chromium offers: `go` sends the learner into a page, `leave` out of it; `press` presses a key there, `at` waits for
// a document's page; `shown` is an element of the page, as an expression.
export async function comeTo(platform, browser, width, height) {
  const page = await browser.open(platform);
  await page.tell('Emulation.setDeviceMetricsOverride', { width, height, deviceScaleFactor: 1, mobile: false });
  await page.until('Boolean(window.launch)');
  const shown = (selector) => `content.document.querySelector(${JSON.stringify(selector)})`;
  return {
    ...page,
    shown,
    go: (address) => page.look(`launch(${JSON.stringify(address)})`),
    async leave() {
      await page.look('leave()');
      await page.until('record.state === "after"');
    },
    press: (key) => page.look(`content.document.body.dispatchEvent(new content.KeyboardEvent('keydown',
      { key: ${JSON.stringify(key)}, bubbles: true, cancelable: true }))`),
    at: (number) => page.until(`${shown('.number')}?.value === '${number}'`),
  };
}
