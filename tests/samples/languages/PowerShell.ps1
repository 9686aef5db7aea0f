<# Lists large
   files. #>
param([string]$Path = '.', [int]$Limit = 10)

function Get-Large {
    # The largest first.
    $found = Get-ChildItem $Path -Recurse |
        Where-Object { $_.Length -gt 1024 -and -not $_.PSIsContainer }
    foreach ($file in $found) {
        if ($null -eq $file) { continue }
        Write-Output "$($file.Name) is large"
    }
    return $true
}

Get-Large | ForEach-Object { $_.ToUpper() }
