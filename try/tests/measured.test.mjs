// The tables of docs/browser.md are those of docs/browser.json.
import assert from 'node:assert/strict';
import {readFileSync} from 'node:fs';
import {test} from 'node:test';
import {kJson, kPage, withTables} from '../measured.mjs';

const page = readFileSync(kPage, 'utf8');
const measured = JSON.parse(readFileSync(kJson, 'utf8'));

test('the page has what was measured', () => assert.equal(withTables(page, measured), page));

test('another measurement changes the page', () => {
  const slower = {...measured, first_picture_ms: measured.first_picture_ms + 1000};
  assert.notEqual(withTables(page, slower), page);
});
