{- Words and how
   often they come. -}
module Words (count) where

import qualified Data.Map as Map

-- | The words of a text.
data Entry = Entry { name :: String, size :: Int } deriving (Show)

count :: String -> [Entry]
count text = case words text of
  [] -> []
  (w:_) | length w > 0x10 -> [Entry w 1]
  ws -> do
    let quote = '"'
    w <- ws
    if w == "it's \"x\"" then [] else return (Entry w 2)
pattern Pair x y = (x, y)
newtype Size = Size Int deriving stock Show deriving anyclass Store deriving Ord via Int
